// The Qt window of one shown dialog: its layout from the dialog's resource description, captions
// and mnemonics, focus, the navigation buttons, keys, and the user's actions recorded as journal
// steps. What each kind of item is built as, and how it is connected and drawn, is in
// item_kinds.cpp. The rest stays one file: layout, mnemonics, focus and recording all work on
// the one map of the window's views and on each other's results (a mnemonic needs the layout's
// tab pages, focus needs the mnemonics' scopes), and split up they would need that state in
// every part.
#include "dialog_window.h"

#include "session_recorder.h"
#include "widget_text.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDoubleValidator>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <map>

namespace QorfmtHost {

using nxsim::ItemKind;
using nxsim::JournalStep;
using nxsim::RuntimeItem;
using nxsim::StepKind;

namespace {

void setWidthHint(QWidget* widget, int characters) {
    if (characters > 0) {
        widget->setMinimumWidth(widget->fontMetrics().averageCharWidth() * characters + 12);
    }
}

// What an item shows of its state besides label, sensitivity and visibility.
std::string shownStateOf(const RuntimeItem& item) {
    std::string state = item.valueText();
    for (const std::string& entry : item.entries()) {
        state += '\x1f' + entry;
    }
    return state + '\x1e' + std::to_string(item.selected());
}

bool isTextEntry(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QPlainTextEdit*>(widget) ||
           qobject_cast<const QSpinBox*>(widget);
}

bool isChooser(const QWidget* widget) {
    return qobject_cast<const QComboBox*>(widget) || qobject_cast<const QListWidget*>(widget) ||
           qobject_cast<const QCheckBox*>(widget) || qobject_cast<const QGroupBox*>(widget);
}

// The mnemonic candidates of a label: the first letters of its words, then its other letters
// and digits, lower case, in order.
std::vector<QChar> mnemonicCandidates(const std::string& label) {
    const QString text = qs(label);
    std::vector<QChar> first;
    std::vector<QChar> other;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text[i].toLower();
        if (!c.isLetterOrNumber() || c.unicode() > 127) {
            continue;
        }
        const bool wordStart = i == 0 || !text[i - 1].isLetterOrNumber();
        (wordStart ? first : other).push_back(c);
    }
    first.insert(first.end(), other.begin(), other.end());
    return first;
}

// Text controls sit beside their caption; lists and multi-line texts below it.
bool captionBeside(ItemKind kind) {
    return kind == ItemKind::StringItem || kind == ItemKind::WideString ||
           kind == ItemKind::IntegerItem || kind == ItemKind::RealItem ||
           kind == ItemKind::OptionMenu || kind == ItemKind::ColorTool;
}

} // namespace

DialogWindow::DialogWindow(nxsim::RuntimeDialog& dialog, bool interactive, QWidget* parent)
    : QDialog(parent), m_dialog(dialog), m_interactive(interactive) {
    setObjectName(qs(dialog.journalName()));
    // Modal to the windows below it only: the listing window stays usable beside it.
    setWindowModality(Qt::WindowModal);
    setSizeGripEnabled(true);
    auto* layout = new QVBoxLayout(this);
    for (const nxsim::DlgElement& element : dialog.layout().elements) {
        if (QWidget* widget = build(element)) {
            addToColumn(layout, element, widget);
        }
    }
    layout->addStretch(0);
    buildNavigation(layout);
    assignMnemonics();
    refreshAll();
    alignCaptions();
    refreshDialog();
    fixWidth();
    m_dialog.addObserver(this);
}

DialogWindow::~DialogWindow() {
    m_dialog.removeObserver(this);
    // Widgets going away emit no user actions into a dialog being torn down.
    for (auto& entry : m_views) {
        entry.second.control->blockSignals(true);
    }
}

QWidget* DialogWindow::build(const nxsim::DlgElement& element) {
    switch (element.kind) {
    case ItemKind::TabControl: {
        auto* tabs = new QTabWidget;
        for (const nxsim::DlgElement& page : element.children) {
            auto* pageWidget = new QWidget;
            auto* pageLayout = new QVBoxLayout(pageWidget);
            for (const nxsim::DlgElement& child : page.children) {
                if (QWidget* widget = build(child)) {
                    addToColumn(pageLayout, child, widget);
                }
            }
            pageLayout->addStretch(0);
            tabs->addTab(pageWidget, qs(page.label));
            if (!page.tooltip.empty()) {
                tabs->setTabToolTip(tabs->count() - 1, qs(page.tooltip));
            }
        }
        std::vector<std::string> labels;
        for (const nxsim::DlgElement& page : element.children) {
            labels.push_back(page.label);
        }
        m_tabs.emplace_back(tabs, labels);
        return tabs;
    }
    case ItemKind::Row: {
        auto* row = new QWidget;
        auto* rowLayout = new QHBoxLayout(row);
        rowLayout->setContentsMargins(0, 0, 0, 0);
        for (const nxsim::DlgElement& child : element.children) {
            if (QWidget* widget = build(child)) {
                rowLayout->addWidget(widget);
            }
        }
        return row;
    }
    case ItemKind::TabPage:
    case ItemKind::Dialog:
        return nullptr;
    default:
        break;
    }
    RuntimeItem* item = m_dialog.itemFor(element);
    if (!item) {
        return nullptr;
    }
    return buildItem(element, *item);
}

QWidget* DialogWindow::buildItem(const nxsim::DlgElement& element, RuntimeItem& item) {
    const KindAdaptor* adaptor = adaptorFor(element.kind);
    if (!adaptor) {
        return nullptr;
    }
    View view;
    view.item = &item;
    QWidget* control = adaptor->build(*this, element, view);
    control->setObjectName(qs(item.name()));
    if (!element.tooltip.empty()) {
        control->setToolTip(qs(element.tooltip));
    }
    if (element.kind != ItemKind::SingleSelectList && element.kind != ItemKind::MultiTextBox) {
        setWidthHint(control, element.width);
    } else if (element.width > 0) {
        setWidthHint(control, element.width);
    }
    view.control = control;
    view.container = control;
    const bool separateCaption = captionBeside(element.kind) ||
                                 element.kind == ItemKind::SingleSelectList ||
                                 element.kind == ItemKind::MultiTextBox;
    if (separateCaption) {
        auto* box = new QWidget;
        QBoxLayout* boxLayout = captionBeside(element.kind)
                                    ? static_cast<QBoxLayout*>(new QHBoxLayout(box))
                                    : static_cast<QBoxLayout*>(new QVBoxLayout(box));
        boxLayout->setContentsMargins(0, 0, 0, 0);
        view.caption = new QLabel;
        view.caption->setBuddy(control);
        view.caption->setToolTip(control->toolTip());
        boxLayout->addWidget(view.caption);
        boxLayout->addWidget(control, 1);
        view.container = box;
    }
    auto inserted = m_views.emplace(&item, view);
    if (!item.name().empty()) {
        m_byName.emplace(item.name(), &item);
    }
    connectItem(inserted.first->second);
    return view.container;
}

void DialogWindow::alignCaptions() {
    // Fields one above the other read best with their boxes starting in one column.
    std::map<QWidget*, std::vector<QLabel*>> byParent;
    for (const auto& entry : m_views) {
        const View& view = entry.second;
        if (view.caption && captionBeside(view.item->kind())) {
            byParent[view.container->parentWidget()].push_back(view.caption);
        }
    }
    for (const auto& group : byParent) {
        int width = 0;
        for (QLabel* caption : group.second) {
            width = std::max(width, caption->sizeHint().width());
        }
        for (QLabel* caption : group.second) {
            caption->setMinimumWidth(width);
        }
    }
}

void DialogWindow::assignMnemonics() {
    // A letter is unique among the controls that can be shown together: those outside tab
    // pages and those of one page (a control on a hidden page takes no keys). OK comes first,
    // so that Alt+O is OK in every dialog; then the tab pages, the controls outside pages and
    // those on pages, each in file order; Apply, Back and Cancel (which Escape presses) take
    // what is left.
    struct Labelled {
        std::string key;
        std::string label;
        std::vector<int> scope;
    };
    std::vector<Labelled> pages;
    std::vector<Labelled> common;
    std::vector<Labelled> onPages;
    std::vector<int> scope;
    int pageCount = 0;
    std::function<void(const nxsim::DlgElement&)> visit = [&](const nxsim::DlgElement& e) {
        if (e.kind == ItemKind::TabPage) {
            pages.push_back({"page:" + e.label, e.label, scope});
            scope.push_back(pageCount++);
        } else if (const RuntimeItem* item = m_dialog.itemFor(e)) {
            auto it = m_views.find(item);
            const bool labelled =
                it != m_views.end() && (it->second.caption || e.kind == ItemKind::PushButton ||
                                        e.kind == ItemKind::Toggle || e.kind == ItemKind::RadioBox);
            if (labelled) {
                (scope.empty() ? common : onPages).push_back({item->name(), item->label(), scope});
            }
        }
        for (const nxsim::DlgElement& child : e.children) {
            visit(child);
        }
        if (e.kind == ItemKind::TabPage) {
            scope.pop_back();
        }
    };
    for (const nxsim::DlgElement& element : m_dialog.layout().elements) {
        visit(element);
    }
    if (m_navigation[0]) {
        assignMnemonic("navigation:OK", "OK", {});
    }
    for (const auto* group : {&pages, &common, &onPages}) {
        for (const Labelled& l : *group) {
            assignMnemonic(l.key, l.label, l.scope);
        }
    }
    const char* texts[4] = {"OK", "Apply", "Back", "Cancel"};
    for (int i = 1; i < 4; ++i) {
        if (m_navigation[i]) {
            assignMnemonic(std::string("navigation:") + texts[i], texts[i], {});
            m_navigation[i]->setText(withMnemonic(std::string("navigation:") + texts[i], texts[i]));
        }
    }
    if (m_navigation[0]) {
        m_navigation[0]->setText(withMnemonic("navigation:OK", "OK"));
    }
    for (const auto& tabs : m_tabs) {
        for (std::size_t i = 0; i < tabs.second.size(); ++i) {
            tabs.first->setTabText(static_cast<int>(i),
                                   withMnemonic("page:" + tabs.second[i], tabs.second[i]));
        }
    }
}

bool DialogWindow::mnemonicsClash(const std::string& a, const std::string& b) const {
    const std::vector<int>& sa = m_scopeOf.at(a);
    const std::vector<int>& sb = m_scopeOf.at(b);
    // Shown together when one's pages are the start of the other's.
    const std::size_t n = std::min(sa.size(), sb.size());
    return std::equal(sa.begin(), sa.begin() + static_cast<std::ptrdiff_t>(n), sb.begin());
}

void DialogWindow::assignMnemonic(const std::string& key, const std::string& label,
                                  const std::vector<int>& scope) {
    if (m_mnemonicOf.count(key)) {
        return;
    }
    m_scopeOf[key] = scope;
    m_labelOf[key] = label;
    std::set<std::string> visited;
    placeMnemonic(key, visited);
}

bool DialogWindow::placeMnemonic(const std::string& key, std::set<std::string>& visited) {
    visited.insert(key);
    const std::vector<QChar> candidates = mnemonicCandidates(m_labelOf[key]);
    auto holdersOf = [&](QChar c) {
        std::vector<std::string> holders;
        for (const auto& other : m_mnemonicOf) {
            if (other.second == c && other.first != key && mnemonicsClash(key, other.first)) {
                holders.push_back(other.first);
            }
        }
        return holders;
    };
    // A free letter of the label, the best first.
    for (QChar c : candidates) {
        if (holdersOf(c).empty()) {
            m_mnemonicOf[key] = c;
            return true;
        }
    }
    // Else a letter whose one holder can move to another letter of its own label, so that as
    // many controls as possible get one (OK keeps its O).
    for (QChar c : candidates) {
        const std::vector<std::string> holders = holdersOf(c);
        if (holders.size() != 1 || visited.count(holders[0]) || holders[0] == "navigation:OK") {
            continue;
        }
        const std::string& holder = holders[0];
        m_mnemonicOf[key] = c;
        m_mnemonicOf.erase(holder);
        if (placeMnemonic(holder, visited)) {
            return true;
        }
        m_mnemonicOf[holder] = c;
        m_mnemonicOf.erase(key);
    }
    return false;
}

QString DialogWindow::withMnemonic(const std::string& key, const std::string& label) {
    const QString text = qs(label);
    auto it = m_mnemonicOf.find(key);
    if (it != m_mnemonicOf.end() && !text.contains(it->second, Qt::CaseInsensitive)) {
        // The program gave the control another label: it gets a letter of the new one, never
        // one that another control shows.
        m_mnemonicOf.erase(it);
        it = m_mnemonicOf.end();
    }
    if (it == m_mnemonicOf.end()) {
        auto scope = m_scopeOf.find(key);
        m_scopeOf[key] = scope == m_scopeOf.end() ? std::vector<int>() : scope->second;
        m_labelOf[key] = label;
        for (QChar c : mnemonicCandidates(label)) {
            const bool taken =
                std::any_of(m_mnemonicOf.begin(), m_mnemonicOf.end(), [&](const auto& other) {
                    return other.second == c && mnemonicsClash(key, other.first);
                });
            if (!taken) {
                m_mnemonicOf[key] = c;
                break;
            }
        }
        it = m_mnemonicOf.find(key);
    }
    int at = -1;
    if (it != m_mnemonicOf.end()) {
        for (int i = 0; i < text.size() && at < 0; ++i) {
            const bool wordStart = i == 0 || !text[i - 1].isLetterOrNumber();
            if (wordStart && text[i].toLower() == it->second) {
                at = i;
            }
        }
        if (at < 0) {
            at = static_cast<int>(text.indexOf(it->second, 0, Qt::CaseInsensitive));
        }
    }
    QString marked;
    for (int i = 0; i < text.size(); ++i) {
        if (i == at) {
            marked += '&';
        }
        marked += text[i];
        if (text[i] == '&') {
            marked += '&';
        }
    }
    return marked;
}

QChar DialogWindow::mnemonic(const std::string& key) const {
    auto it = m_mnemonicOf.find(key);
    return it == m_mnemonicOf.end() ? QChar() : it->second;
}

void DialogWindow::fixWidth() {
    // Sizes are only right once the style has polished the widgets.
    ensurePolished();
    std::vector<QWidget*> hidden;
    for (const auto& entry : m_views) {
        if (entry.second.container->isHidden()) {
            hidden.push_back(entry.second.container);
            entry.second.container->setVisible(true);
        }
    }
    // The layouts of a window not shown yet keep the sizes they saw last: they must look again.
    auto invalidateLayouts = [this] {
        for (QWidget* w : findChildren<QWidget*>()) {
            w->updateGeometry();
        }
        for (QLayout* l : findChildren<QLayout*>()) {
            l->invalidate();
        }
    };
    invalidateLayouts();
    const int fullMinimum = layout()->minimumSize().width();
    for (QWidget* widget : hidden) {
        widget->setVisible(false);
    }
    invalidateLayouts();
    // A strut as wide as the dialog with everything shown: hiding a control leaves the width,
    // and a label the program makes longer still widens the dialog. The first size is left to
    // Qt (the contents' wish, within the screen).
    const int fromFile = fontMetrics().averageCharWidth() * m_dialog.layout().width;
    const int margins = layout()->contentsMargins().left() + layout()->contentsMargins().right();
    static_cast<QBoxLayout*>(layout())->addSpacing(0);
    layout()
        ->itemAt(layout()->count() - 1)
        ->spacerItem()
        ->changeSize(std::max(fullMinimum, fromFile) - margins, 0, QSizePolicy::Fixed,
                     QSizePolicy::Fixed);
    layout()->invalidate();
}

void DialogWindow::buildNavigation(QBoxLayout* layout) {
    const nxsim::DlgNavigation& nav = m_dialog.layout().navigation;
    const bool present[4] = {nav.ok, nav.apply, nav.back, nav.cancel};
    const char* texts[4] = {"OK", "Apply", "Back", "Cancel"};
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    for (int i = 0; i < 4; ++i) {
        if (!present[i]) {
            continue;
        }
        auto* button = new QPushButton(tr(texts[i]));
        button->setAutoDefault(false);
        button->installEventFilter(this);
        button->setObjectName(QString("navigation_") + texts[i]);
        m_navigation[i] = button;
        row->addWidget(button);
    }
    layout->addLayout(row);
    if (m_navigation[0]) {
        connect(m_navigation[0], &QPushButton::clicked, this,
                [this] { act(step(StepKind::Ok), [this] { m_dialog.ok(); }); });
    }
    if (m_navigation[3]) {
        connect(m_navigation[3], &QPushButton::clicked, this,
                [this] { act(step(StepKind::Cancel), [this] { m_dialog.cancel(); }); });
    }
    // The runtime gives Apply and Back no action; they show their state and say so.
    for (int i : {1, 2}) {
        if (m_navigation[i]) {
            connect(m_navigation[i], &QPushButton::clicked, this, [this, i] {
                emit notice(
                    tr("%1 has no function in this host").arg(tr(i == 1 ? "Apply" : "Back")));
            });
        }
    }
}

void DialogWindow::connectItem(View& view) {
    adaptorFor(view.item->kind())->connect(*this, view);
}

void DialogWindow::refresh(const View& view) {
    const RuntimeItem& item = *view.item;
    if (&item == m_typing) {
        return;
    }
    QSignalBlocker blockControl(view.control);
    QSignalBlocker blockRadios(view.radios);
    const bool wasUpdating = m_updating;
    m_updating = true;
    view.container->setVisible(item.visible());
    view.container->setEnabled(item.sensitive());
    if (view.caption) {
        view.caption->setText(withMnemonic(item.name(), item.label()));
        view.caption->setVisible(!item.label().empty());
    }
    adaptorFor(item.kind())->refresh(*this, view);
    m_updating = wasUpdating;
}

void DialogWindow::refreshAll() {
    for (auto& entry : m_views) {
        entry.second.shownState = shownStateOf(*entry.first);
        refresh(entry.second);
    }
}

void DialogWindow::refreshDialog() {
    // The runtime reports a title, navigation or focus change alike. A change of title or
    // navigation must not pull the focus back from where the user put it; a SetFocus call,
    // even on the item that has it already, moves it.
    bool otherChange = windowTitle() != qs(m_dialog.title());
    setWindowTitle(qs(m_dialog.title()));
    for (int i = 0; i < 4; ++i) {
        if (m_navigation[i]) {
            otherChange =
                otherChange || m_navigation[i]->isEnabled() != m_dialog.navigationSensitive(i);
            m_navigation[i]->setEnabled(m_dialog.navigationSensitive(i));
        }
    }
    if (!otherChange || m_dialog.focus() != m_focusShown) {
        applyFocus();
    }
}

QWidget* DialogWindow::firstInputControl() const {
    QWidget* chooser = nullptr;
    QWidget* button = nullptr;
    for (const auto& item : m_dialog.items()) {
        auto it = m_views.find(item.get());
        if (it == m_views.end()) {
            continue;
        }
        QWidget* control = it->second.control;
        // Controls of the tab pages not shown are hidden with their page.
        if (!control->isVisibleTo(this) || !control->isEnabled()) {
            continue;
        }
        if (isTextEntry(control)) {
            return control;
        }
        if (item->kind() == ItemKind::RadioBox) {
            if (!chooser && it->second.radios->checkedButton()) {
                chooser = it->second.radios->checkedButton();
            }
        } else if (!chooser && isChooser(control) && item->kind() != ItemKind::GroupBox) {
            chooser = control;
        } else if (!button && qobject_cast<QPushButton*>(control)) {
            button = control;
        }
    }
    return chooser ? chooser : button;
}

void DialogWindow::applyFocus() {
    const RuntimeItem* focus = m_dialog.focus();
    m_focusShown = focus;
    if (!focus) {
        return;
    }
    auto it = m_views.find(focus);
    if (it != m_views.end()) {
        it->second.control->setFocus(Qt::OtherFocusReason);
    }
}

QWidget* DialogWindow::control(const std::string& item) const {
    auto it = m_byName.find(item);
    return it == m_byName.end() ? nullptr : m_views.at(it->second).control;
}

QWidget* DialogWindow::container(const std::string& item) const {
    auto it = m_byName.find(item);
    return it == m_byName.end() ? nullptr : m_views.at(it->second).container;
}

QLabel* DialogWindow::caption(const std::string& item) const {
    auto it = m_byName.find(item);
    return it == m_byName.end() ? nullptr : m_views.at(it->second).caption;
}

QPushButton* DialogWindow::navigationButton(int index) const {
    return index >= 0 && index < 4 ? m_navigation[index] : nullptr;
}

void DialogWindow::setRecorder(SessionRecorder* recorder, int depth) {
    m_recorder = recorder;
    m_depth = depth;
}

std::exception_ptr DialogWindow::takeError() {
    std::exception_ptr error = m_error;
    m_error = nullptr;
    return error;
}

void DialogWindow::itemChanged(const RuntimeItem& item) {
    auto it = m_views.find(&item);
    if (it != m_views.end()) {
        // A replay shows the page where a value just changed, so that its pictures show it.
        const std::string state = shownStateOf(item);
        if (state != it->second.shownState) {
            it->second.shownState = state;
            if (!m_interactive) {
                revealPageOf(it->second.container);
            }
        }
        refresh(it->second);
    }
    emit activity();
}

void DialogWindow::revealPageOf(QWidget* widget) {
    for (QWidget* w = widget; w && w != this; w = w->parentWidget()) {
        // A tab page sits in the tab widget's stack, whose parent is the tab widget.
        QWidget* stack = w->parentWidget();
        auto* tabs = stack ? qobject_cast<QTabWidget*>(stack->parentWidget()) : nullptr;
        if (tabs && tabs->indexOf(w) >= 0) {
            tabs->setCurrentWidget(w);
        }
    }
}

void DialogWindow::dialogChanged(const nxsim::RuntimeDialog& /*dialog*/) {
    refreshDialog();
    emit activity();
}

void DialogWindow::dialogEnded(const nxsim::RuntimeDialog& /*dialog*/) {
    emit ended();
}

void DialogWindow::reject() {
    // The same path as the Cancel button, so that Escape and the close box never do more or
    // less than Cancel does.
    if (m_navigation[3] && m_dialog.navigationSensitive(3)) {
        act(step(StepKind::Cancel), [this] { m_dialog.cancel(); });
        return;
    }
    act(step(StepKind::Close), [this] { m_dialog.close(); });
}

void DialogWindow::closeEvent(QCloseEvent* event) {
    // The window goes away when the dialog ends, not before: the close box is a user action.
    event->ignore();
    if (!m_dialog.ended()) {
        reject();
    }
}

void DialogWindow::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (m_dialog.focus()) {
        applyFocus();
    } else if (QWidget* first = firstInputControl()) {
        // Never the tab bar or a menu before the field to type into.
        first->setFocus(Qt::OtherFocusReason);
    }
}

bool DialogWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return QDialog::eventFilter(watched, event);
    }
    auto* key = static_cast<QKeyEvent*>(event);
    if (auto* edit = qobject_cast<QPlainTextEdit*>(watched)) {
        if (key->key() == Qt::Key_Tab && key->modifiers() == Qt::ControlModifier) {
            if (!edit->isReadOnly()) {
                edit->insertPlainText("\t");
            }
            return true;
        }
    } else if (auto* button = qobject_cast<QPushButton*>(watched)) {
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) &&
            (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
            if (button->isEnabled()) {
                button->click();
            }
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

JournalStep DialogWindow::step(StepKind kind, const std::string& item) const {
    JournalStep s;
    s.kind = kind;
    s.item = item;
    return s;
}

JournalStep DialogWindow::chooseStep(const std::string& item, int index) const {
    JournalStep s = step(StepKind::Choose, item);
    s.number = index;
    // The entry's text reads better in a journal, when it names one entry only.
    const RuntimeItem* menu = m_dialog.item(item);
    if (menu && index >= 0 && index < static_cast<int>(menu->entries().size())) {
        const std::vector<std::string>& entries = menu->entries();
        const std::string& text = entries[static_cast<std::size_t>(index)];
        if (std::count(entries.begin(), entries.end(), text) == 1) {
            s.byText = true;
            s.text = text;
        }
    }
    return s;
}

void DialogWindow::act(const JournalStep& s, const std::function<void()>& action) {
    if (!m_interactive || m_error || m_dialog.ended() || !m_dialog.shown()) {
        refreshAll();
        return;
    }
    std::size_t mark = 0;
    if (m_recorder) {
        m_recorder->flushPending();
        mark = m_recorder->lineCount();
        m_recorder->step(s, m_depth);
    }
    try {
        action();
    } catch (const nxsim::ActionRefused& refused) {
        if (m_recorder) {
            m_recorder->retract(mark);
        }
        if (!m_dialog.ended()) {
            refreshAll();
        }
        emit notice(QString::fromStdString(refused.what()));
    } catch (...) {
        m_error = std::current_exception();
        emit failed();
    }
    emit activity();
}

void DialogWindow::typed(const std::string& item, const std::string& value) {
    if (!m_interactive || m_error || m_dialog.ended() || !m_dialog.shown()) {
        return;
    }
    try {
        // The field keeps the text as typed ("1.", "007"); the runtime keeps the value.
        m_typing = m_dialog.item(item);
        m_dialog.setValue(item, value);
        m_typing = nullptr;
        if (m_recorder) {
            m_recorder->pendingSet(this, item, value, m_depth);
        }
    } catch (const nxsim::ActionRefused&) {
        m_typing = nullptr;
        // A number on its way ("-", "1e") is not taken yet; leaving the field shows the value
        // in force.
    } catch (...) {
        m_typing = nullptr;
        m_error = std::current_exception();
        emit failed();
    }
}

} // namespace QorfmtHost
