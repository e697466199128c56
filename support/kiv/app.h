#pragma once

#include <string>

namespace Kiv {

/// An application known to the in-house libraries by its name.
class App {
public:
    explicit App(std::string name);
    virtual ~App();

    App(const App&) = delete;
    App& operator=(const App&) = delete;

    const std::string& name() const { return m_name; }

    /// The application alive now (the most recently constructed one), or null.
    static const App* current();

private:
    std::string m_name;
    const App* m_previous;
};

} // namespace Kiv
