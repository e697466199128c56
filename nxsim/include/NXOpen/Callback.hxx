#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <typeinfo>

namespace NXOpen {

/// The root of every callback object that NX Open stores: it copies itself and compares.
class BaseCallback {
public:
    virtual ~BaseCallback() = default;
    virtual BaseCallback* Clone() const = 0;
    virtual bool Equals(const BaseCallback& other) const = 0;
};

/// A callable taking one argument; the registering call keeps a Clone() of it.
template <class R, class A>
class Callback1 : public BaseCallback {
public:
    virtual R operator()(A argument) const = 0;
};

/// A member function bound to its object.
template <class T, class R, class A>
class MemberCallback1 : public Callback1<R, A> {
public:
    using Function = R (T::*)(A);
    MemberCallback1(T* object, Function function) : m_object(object), m_function(function) {}

    R operator()(A argument) const override { return (m_object->*m_function)(argument); }
    BaseCallback* Clone() const override { return new MemberCallback1(*this); }
    bool Equals(const BaseCallback& other) const override {
        const auto* same = dynamic_cast<const MemberCallback1*>(&other);
        return same && same->m_object == m_object && same->m_function == m_function;
    }

private:
    T* m_object;
    Function m_function;
};

/// A free function.
template <class R, class A>
class StaticCallback1 : public Callback1<R, A> {
public:
    using Function = R (*)(A);
    explicit StaticCallback1(Function function) : m_function(function) {}

    R operator()(A argument) const override { return m_function(argument); }
    BaseCallback* Clone() const override { return new StaticCallback1(*this); }
    bool Equals(const BaseCallback& other) const override {
        const auto* same = dynamic_cast<const StaticCallback1*>(&other);
        return same && same->m_function == m_function;
    }

private:
    Function m_function;
};

template <class T, class R, class A>
MemberCallback1<T, R, A> make_callback(T* object, R (T::*function)(A)) {
    return MemberCallback1<T, R, A>(object, function);
}

template <class R, class A>
StaticCallback1<R, A> make_callback(R (*function)(A)) {
    return StaticCallback1<R, A>(function);
}

} // namespace NXOpen
