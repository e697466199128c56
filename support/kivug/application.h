#pragma once

#include "kiv/app.h"

#include <string>

namespace KivUg {

/// An application that runs inside the CAD system.
class Application : public Kiv::App {
public:
    explicit Application(const std::string& name) : Kiv::App(name) {}
};

} // namespace KivUg
