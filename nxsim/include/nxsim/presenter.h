#pragma once

#include <string>
#include <vector>

namespace nxsim {

class RuntimeDialog;

enum class MessageKind { Error, Warning, Information, Question };
/// "error", "warning", "information", "question"
const char* messageKindWord(MessageKind kind);

/// The answer to a screen position request.
struct PointAnswer {
    enum Status { Point, Back, Cancel };
    Status status = Cancel;
    double point[3] = {0.0, 0.0, 0.0};
};

/// The answer to an object selection.
struct ObjectAnswer {
    enum Status { Selected, Back, Cancel };
    Status status = Cancel;
    unsigned int tag = 0;
};

/// Puts the platform's modal requests in front of a user: a script (journals, tests) or windows.
/// The platform records what was asked (see platform.h) before it calls the presenter. Each
/// request the presenter does not answer itself is refused by the base with an NXException
/// (nxsim::ErrorCode::Unanswered) whose text names the request, so that a presenter made for a
/// test overrides only what the test scripts.
class Presenter {
public:
    virtual ~Presenter() = default;

    /// Runs a dialog modally: shows it, feeds it user actions (RuntimeDialog::press, ok, ...)
    /// and returns once dialog.ended() is true. Exceptions from the dialog's handlers must pass
    /// through unchanged. Called again, nested, when a handler shows another dialog.
    virtual void runDialog(RuntimeDialog& dialog);
    /// Shows a message box and returns when it is closed.
    virtual void showMessage(MessageKind kind, const std::string& title, const std::string& text);
    /// The list picker: the chosen row, or a negative value for cancel.
    virtual int pickFromList(const std::string& title, const std::string& prompt,
                             const std::vector<std::string>& items, int initialSelection);
    /// A screen position, in absolute coordinates of the display part.
    virtual PointAnswer indicatePoint(const std::string& cue);
    /// One object of the display part, by its tag.
    virtual ObjectAnswer selectObject(const std::string& message, const std::string& title,
                                      int scope);
};

/// Installs the process-wide presenter (null: none, and every modal request throws
/// NXOpen::NXException). The caller keeps ownership.
void setPresenter(Presenter* presenter);
Presenter* presenter();

/// Installs a presenter for its lifetime and restores the previous one afterwards.
class ScopedPresenter {
public:
    explicit ScopedPresenter(Presenter* presenter);
    ~ScopedPresenter();
    ScopedPresenter(const ScopedPresenter&) = delete;
    ScopedPresenter& operator=(const ScopedPresenter&) = delete;

private:
    Presenter* m_previous;
};

/// Shows a message box through the presenter and records it (what NXOpen::NXMessageBox does).
void showMessageBox(MessageKind kind, const std::string& title, const std::string& text);
/// The list picker, recorded and shown through the presenter: the chosen row, or -1 for cancel.
/// There is no UIStyler item for it; the dialog framework's SingleSelectDialog calls this.
int pickFromList(const std::string& title, const std::string& prompt,
                 const std::vector<std::string>& items, int initialSelection);

} // namespace nxsim
