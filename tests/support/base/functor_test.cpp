#include "base/functor.h"

#include <gtest/gtest.h>

#include <boost/function.hpp>

#include <string>

namespace {

class Counter {
public:
    int add(int amount) {
        m_total += amount;
        return m_total;
    }
    void remember(const char* text) { m_last = text; }

    int m_total = 0;
    std::string m_last;
};

TEST(Functor, CallsBoundMemberFunctionOnItsObject) {
    Counter counter;
    Base::Functor<int, int> add(&counter, &Counter::add);
    EXPECT_EQ(add(3), 3);
    EXPECT_EQ(add(4), 7);
    EXPECT_EQ(counter.m_total, 7);
}

TEST(Functor, MakeFunctorBindsVoidMemberFunction) {
    Counter counter;
    auto remember = Base::makeFunctor(&counter, &Counter::remember);
    remember("hello");
    EXPECT_EQ(counter.m_last, "hello");
}

TEST(Functor, CopiesCallTheSameObject) {
    Counter counter;
    Base::Functor<int, int> original(&counter, &Counter::add);
    Base::Functor<int, int> copy = original;
    original(1);
    copy(2);
    EXPECT_EQ(counter.m_total, 3);
}

TEST(Functor, HoldsLambdaWithCapturedState) {
    int calls = 0;
    Base::Functor<int, int> twice([&calls](int x) {
        ++calls;
        return 2 * x;
    });
    EXPECT_EQ(twice(21), 42);
    EXPECT_EQ(calls, 1);
}

TEST(Functor, EmptyFunctorIsFalseAndThrowsWhenCalled) {
    Base::Functor<int, int> empty;
    EXPECT_FALSE(static_cast<bool>(empty));
    EXPECT_THROW(empty(1), boost::bad_function_call);
    Counter counter;
    EXPECT_TRUE(static_cast<bool>(Base::makeFunctor(&counter, &Counter::add)));
}

} // namespace
