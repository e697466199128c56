#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <exception>
#include <string>

namespace nxsim::detail {
struct ExceptionFactory;
}

namespace NXOpen {

/// The exception of every failing NX Open call. Built only through Create(); the message comes
/// from the platform's message table, followed by the details of the failure where there are any.
class NXException : public std::exception {
public:
    /// The exception for `errorCode` with the table's message for it.
    static NXException Create(int errorCode);

    int ErrorCode() const { return m_code; }
    const char* Message() const { return m_message.c_str(); }
    const char* what() const noexcept override { return m_message.c_str(); }

private:
    friend struct nxsim::detail::ExceptionFactory;
    NXException(int code, std::string message) : m_code(code), m_message(std::move(message)) {}

    int m_code;
    std::string m_message;
};

} // namespace NXOpen
