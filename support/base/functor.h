#pragma once

#include <boost/function.hpp>

#include <type_traits>
#include <utility>

namespace Base {

/// A copyable holder of any callable taking one `A` and returning `R`; in practice a member
/// function bound to its object. Calling an empty functor throws `boost::bad_function_call`.
template <class R, class A>
class Functor {
public:
    Functor() = default;

    template <class F, class = std::enable_if_t<!std::is_same_v<std::decay_t<F>, Functor>>>
    Functor(F callable) : m_function(std::move(callable)) {}

    template <class T>
    Functor(T* object, R (T::*method)(A))
        : m_function([object, method](A argument) -> R { return (object->*method)(argument); }) {}

    R operator()(A argument) const { return m_function(argument); }

    explicit operator bool() const { return !m_function.empty(); }

private:
    boost::function<R(A)> m_function;
};

/// Binds `method` to `object`; the object must outlive every copy of the result.
template <class T, class R, class A>
Functor<R, A> makeFunctor(T* object, R (T::*method)(A)) {
    return Functor<R, A>(object, method);
}

} // namespace Base
