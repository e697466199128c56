#include "kivug/application.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(Application, KeepsItsNameAndIsCurrentWhileAlive) {
    EXPECT_EQ(Kiv::App::current(), nullptr);
    {
        KivUg::Application application("qorfmt_configure");
        EXPECT_EQ(application.name(), "qorfmt_configure");
        EXPECT_EQ(Kiv::App::current(), &application);
    }
    EXPECT_EQ(Kiv::App::current(), nullptr);
}

TEST(Application, IsDestroyedThroughTheBaseClass) {
    std::unique_ptr<Kiv::App> application = std::make_unique<KivUg::Application>("a");
    EXPECT_EQ(Kiv::App::current(), application.get());
    application.reset();
    EXPECT_EQ(Kiv::App::current(), nullptr);
}

TEST(Application, NestedApplicationRestoresTheOuterOneWhenDestroyed) {
    KivUg::Application outer("outer");
    {
        KivUg::Application inner("inner");
        EXPECT_EQ(Kiv::App::current()->name(), "inner");
    }
    EXPECT_EQ(Kiv::App::current()->name(), "outer");
}

} // namespace
