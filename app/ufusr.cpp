// The entry point that NX calls when the user starts the configurator.

#include "kivug/application.h"
#include "ui/message_dialogs.h"
#include "workspace/main_dialog.h"

#include <NXOpen/NXException.hxx>
#include <uf.h>

#include <exception>

namespace {

/// NX's code for a run the user ended on purpose; the run ends without a message.
constexpr int quietEndErrorCode = 1105003;

/// Keeps the NX Open session initialised for the run.
class SessionGuard {
public:
    SessionGuard() {
        if (const int code = UF_initialize()) {
            throw NXOpen::NXException::Create(code);
        }
    }

    // A failure of UF_terminate is reported like any other, except while another exception is
    // already leaving the run: that one is the user's real problem, and throwing now would end
    // the whole CAD session.
    ~SessionGuard() noexcept(false) {
        const int code = UF_terminate();
        if (code && std::uncaught_exceptions() == m_uncaughtAtStart) {
            throw NXOpen::NXException::Create(code);
        }
    }

    SessionGuard(const SessionGuard&) = delete;
    SessionGuard& operator=(const SessionGuard&) = delete;

private:
    int m_uncaughtAtStart = std::uncaught_exceptions();
};

void run() {
    SessionGuard session;
    KivUg::Application application("qorfmt_configure");
    QorBorderConf::MainDialog mainDialog;
    mainDialog.show();
}

} // namespace

extern "C" __attribute__((visibility("default"))) void
ufusr(char* /*parameter*/, int* /*returnCode*/, int /*parameterLength*/) {
    try {
        run();
    } catch (const NXOpen::NXException& error) {
        if (error.ErrorCode() != quietEndErrorCode) {
            KivNX::UI::errorDialog("Error", error.what());
        }
    } catch (const std::exception& error) {
        KivNX::UI::errorDialog("Error", error.what());
    }
}
