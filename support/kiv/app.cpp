#include "kiv/app.h"

namespace Kiv {

namespace {
const App* g_current = nullptr;
}

App::App(std::string name) : m_name(std::move(name)), m_previous(g_current) {
    g_current = this;
}

App::~App() {
    if (g_current == this) {
        g_current = m_previous;
    }
}

const App* App::current() {
    return g_current;
}

} // namespace Kiv
