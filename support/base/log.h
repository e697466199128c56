#pragma once

#include <memory>
#include <ostream>
#include <streambuf>
#include <string>

namespace Base {
namespace log {

/// Where every logger's lines go, for the whole process. Read once from the environment variable
/// QORFMT_LOG: unset, empty or "none" sends them nowhere, "stderr" to standard error, anything
/// else is a file that lines are appended to. A file that cannot be opened turns logging off with
/// one warning on standard error.
void setDestination(const std::string& destination);
std::string destination();

/// A named logger. It is enabled when a destination is set, unless switched off by hand.
class Logger {
public:
    explicit Logger(std::string name);

    const std::string& name() const { return m_name; }
    bool enabled() const;
    void setEnabled(bool enabled) { m_switchedOff = !enabled; }

    /// Writes one line: time (UTC), logger name and text. Nothing happens when disabled.
    void write(const std::string& text) const;

private:
    std::string m_name;
    bool m_switchedOff = false;
};

/// An output stream on a logger that writes one log line per end of line; a partial last line is
/// written when the stream is destroyed.
class LoggerStream : public std::ostream {
public:
    explicit LoggerStream(Logger& logger);
    ~LoggerStream() override;

    LoggerStream(const LoggerStream&) = delete;
    LoggerStream& operator=(const LoggerStream&) = delete;

private:
    class LineBuffer : public std::streambuf {
    public:
        explicit LineBuffer(Logger& logger) : m_logger(logger) {}
        void flushPartialLine();

    protected:
        int_type overflow(int_type c) override;
        std::streamsize xsputn(const char* s, std::streamsize n) override;

    private:
        Logger& m_logger;
        std::string m_line;
    };

    LineBuffer m_buffer;
};

} // namespace log
} // namespace Base
