#pragma once

#include <nxsim/dlg.h>
#include <nxsim/journal.h>
#include <nxsim/runtime.h>

#include <QDialog>

#include <exception>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

class QBoxLayout;
class QButtonGroup;
class QLabel;
class QPushButton;
class QTabWidget;

namespace QorfmtHost {

class SessionRecorder;

/// A dialog of the runtime drawn with native widgets, laid out as its resource file says. It
/// follows every change of the dialog's state and turns the user's input into the runtime's user
/// actions (the journal's words), which it also hands to a recorder. Refused actions put the
/// widget back and report why; an exception from a handler stops the window's event handling
/// and is kept for the presenter, which rethrows it.
class DialogWindow : public QDialog, public nxsim::DialogObserver {
    Q_OBJECT

public:
    /// `interactive` false: the window shows the state but ignores input (journal replay).
    DialogWindow(nxsim::RuntimeDialog& dialog, bool interactive, QWidget* parent = nullptr);
    ~DialogWindow() override;

    nxsim::RuntimeDialog& dialog() const { return m_dialog; }

    /// The widget that carries the item's value: QPushButton, QListWidget, QComboBox, QLineEdit,
    /// QPlainTextEdit, QGroupBox (radio box and group), QCheckBox, QSpinBox (colour) or QLabel;
    /// null for an unknown name.
    QWidget* control(const std::string& item) const;
    /// The widget that shows or hides the item with its label.
    QWidget* container(const std::string& item) const;
    /// The separate caption of a text, number, list or option item; null when the control shows
    /// its own label.
    QLabel* caption(const std::string& item) const;
    /// The navigation button for DialogItemIndex 0 (OK) to 3 (Cancel); null when the resource
    /// file gives the dialog none.
    QPushButton* navigationButton(int index) const;

    /// Records the user's actions at nesting `depth`; null records nothing.
    void setRecorder(SessionRecorder* recorder, int depth);
    /// The exception that a handler threw during the user's last action, if any (taken once).
    std::exception_ptr takeError();

    /// The mnemonic letter (lower case) of an item's label, of a tab page's label ("page:LABEL")
    /// or of a navigation button ("navigation:Apply"); null when it has none.
    QChar mnemonic(const std::string& key) const;
    /// Every mnemonic letter of the dialog by what carries it (the keys of mnemonic()).
    const std::map<std::string, QChar>& mnemonics() const { return m_mnemonicOf; }
    /// Whether the two can be shown at once (not on different tab pages), so that their letters
    /// must differ.
    bool mnemonicsClash(const std::string& a, const std::string& b) const;
    /// The control that gets the focus when the dialog is shown and the program put it nowhere:
    /// the first field to type into on the shown page, else the first list or menu to choose
    /// from, else the first button; null when none can take it.
    QWidget* firstInputControl() const;

    void itemChanged(const nxsim::RuntimeItem& item) override;
    void dialogChanged(const nxsim::RuntimeDialog& dialog) override;
    void dialogEnded(const nxsim::RuntimeDialog& dialog) override;

signals:
    /// The dialog ended (OK, Cancel, close or a handler).
    void ended();
    /// A handler threw; takeError() has the exception.
    void failed();
    /// A refused action or a button without a function here: the reason, for the cue line.
    void notice(const QString& text);
    /// Any state change, so that the host can refresh what it shows of the platform.
    void activity();

protected:
    /// Escape and the close box: Cancel when the dialog has a sensitive Cancel button, else the
    /// window's close.
    void reject() override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct View {
        const nxsim::RuntimeItem* item = nullptr;
        QWidget* container = nullptr;
        QWidget* control = nullptr;
        QLabel* caption = nullptr;
        QButtonGroup* radios = nullptr;
        /// What the item showed when last drawn: value, rows or entries, selection.
        std::string shownState;
    };

    /// Each item kind as the window shows it: the widget it is built as, how the widget's
    /// signals reach the item, and how the item's state is shown (item_kinds.cpp).
    struct Kinds;
    struct KindAdaptor {
        QWidget* (*build)(DialogWindow& window, const nxsim::DlgElement& element, View& view);
        void (*connect)(DialogWindow& window, View& view);
        void (*refresh)(DialogWindow& window, const View& view);
    };
    /// Null for the kinds that are no item of their own (tabs, pages, rows).
    static const KindAdaptor* adaptorFor(nxsim::ItemKind kind);

    QWidget* build(const nxsim::DlgElement& element);
    QWidget* buildItem(const nxsim::DlgElement& element, nxsim::RuntimeItem& item);
    void buildNavigation(QBoxLayout* layout);
    void alignCaptions();
    /// Gives every labelled control a mnemonic letter, in file order, none used twice.
    void assignMnemonics();
    /// `scope`: the tab pages (numbered in file order) that the control is on, outermost first.
    void assignMnemonic(const std::string& key, const std::string& label,
                        const std::vector<int>& scope);
    /// Gives `key` a letter of its label, moving other controls' letters where that helps;
    /// false when none is left.
    bool placeMnemonic(const std::string& key, std::set<std::string>& visited);
    /// The label with its mnemonic marked ('&'), the rest escaped.
    QString withMnemonic(const std::string& key, const std::string& label);
    /// Keeps the width that the dialog needs with every control shown, so that showing or hiding
    /// one never changes it.
    void fixWidth();
    void connectItem(View& view);
    void refresh(const View& view);
    void refreshAll();
    /// During a replay, brings the tab page that holds `widget` to the front.
    void revealPageOf(QWidget* widget);
    void refreshDialog();
    void applyFocus();

    /// Records `step`, runs `action`, and deals with refusals and handler exceptions.
    void act(const nxsim::JournalStep& step, const std::function<void()>& action);
    /// Sets a typed value without an event and records it as a pending `set`.
    void typed(const std::string& item, const std::string& value);
    nxsim::JournalStep step(nxsim::StepKind kind, const std::string& item = {}) const;
    /// `choose ITEM "TEXT"`, or `choose ITEM N` when the text is not unique.
    nxsim::JournalStep chooseStep(const std::string& item, int index) const;

    nxsim::RuntimeDialog& m_dialog;
    bool m_interactive;
    bool m_updating = false;
    SessionRecorder* m_recorder = nullptr;
    int m_depth = 1;
    std::exception_ptr m_error;
    std::map<const nxsim::RuntimeItem*, View> m_views;
    std::map<std::string, const nxsim::RuntimeItem*> m_byName;
    QPushButton* m_navigation[4] = {nullptr, nullptr, nullptr, nullptr};
    const nxsim::RuntimeItem* m_focusShown = nullptr; ///< the focus item last applied
    const nxsim::RuntimeItem* m_typing = nullptr;     ///< the item whose text the user types
    std::map<std::string, QChar> m_mnemonicOf;
    std::map<std::string, std::vector<int>> m_scopeOf; ///< tab pages of each mnemonic's control
    std::map<std::string, std::string> m_labelOf;      ///< the label each mnemonic comes from
    /// The tab widgets with the label of each page, for their mnemonics.
    std::vector<std::pair<QTabWidget*, std::vector<std::string>>> m_tabs;
};

} // namespace QorfmtHost
