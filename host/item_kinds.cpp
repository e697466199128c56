// What each kind of dialog item is in the host's window: the Qt widget it is built as, how the
// widget's signals reach the item as the user's actions, and how the item's state is drawn. One
// struct per kind, and one table from kind to the three steps.
#include "dialog_window.h"

#include "widget_text.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleValidator>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <algorithm>
#include <map>

namespace QorfmtHost {

using nxsim::ItemKind;
using nxsim::JournalStep;
using nxsim::RuntimeItem;
using nxsim::StepKind;

// One struct per kind: `Widget`, the one Qt class the kind is built as; `make` builds it;
// `connect` sends its signals to the item as the user's actions (recorded as journal steps);
// `refresh` shows the item's state in it. adaptor<K>() casts the view's control to K::Widget in
// one place for the three, the widget being the one K::make built.
struct DialogWindow::Kinds {
    struct Button {
        using Widget = QPushButton;
        static Widget* make(DialogWindow& window, const nxsim::DlgElement&, View&) {
            auto* button = new QPushButton;
            // Enter in a text field fires that field's activate event, never a button; Enter on
            // a button presses it (see eventFilter).
            button->setAutoDefault(false);
            button->installEventFilter(&window);
            return button;
        }
        static void connect(DialogWindow& w, Widget* button, const std::string& name, View&) {
            QObject::connect(button, &QPushButton::clicked, &w, [&w, name] {
                w.act(w.step(StepKind::Press, name), [&w, name] { w.m_dialog.press(name); });
            });
        }
        static void refresh(DialogWindow& w, Widget* button, const RuntimeItem& item, const View&) {
            button->setText(w.withMnemonic(item.name(), item.label()));
        }
    };

    struct List {
        using Widget = QListWidget;
        static Widget* make(DialogWindow&, const nxsim::DlgElement& element, View&) {
            auto* list = new QListWidget;
            list->setSelectionMode(QAbstractItemView::SingleSelection);
            if (element.rows > 0) {
                list->setMinimumHeight(list->fontMetrics().lineSpacing() * element.rows + 8);
            }
            return list;
        }
        static void connect(DialogWindow& w, Widget* list, const std::string& name, View&) {
            QObject::connect(list, &QListWidget::itemSelectionChanged, &w, [&w, list, name] {
                if (w.m_updating) {
                    return;
                }
                const QList<QListWidgetItem*> chosen = list->selectedItems();
                if (chosen.isEmpty()) {
                    w.act(w.step(StepKind::Deselect, name),
                          [&w, name] { w.m_dialog.deselect(name); });
                    return;
                }
                const int row = list->row(chosen.front());
                JournalStep s = w.step(StepKind::Select, name);
                s.number = row;
                w.act(s, [&w, name, row] { w.m_dialog.select(name, row); });
            });
            QObject::connect(list, &QListWidget::itemDoubleClicked, &w,
                             [&w, list, name](QListWidgetItem* clicked) {
                                 const int row = list->row(clicked);
                                 JournalStep s = w.step(StepKind::DoubleClick, name);
                                 s.number = row;
                                 w.act(s, [&w, name, row] { w.m_dialog.doubleClick(name, row); });
                             });
        }
        static void refresh(DialogWindow&, Widget* list, const RuntimeItem& item, const View&) {
            const QStringList rows = toStringList(item.entries());
            QStringList shown;
            for (int i = 0; i < list->count(); ++i) {
                shown << list->item(i)->text();
            }
            if (shown != rows) {
                list->clear();
                list->addItems(rows);
            }
            if (item.selected() >= 0) {
                list->setCurrentRow(item.selected());
            } else {
                list->clearSelection();
                list->setCurrentRow(-1);
            }
        }
    };

    struct Option {
        using Widget = QComboBox;
        static Widget* make(DialogWindow&, const nxsim::DlgElement&, View&) {
            return new QComboBox;
        }
        static void connect(DialogWindow& w, Widget* combo, const std::string& name, View&) {
            QObject::connect(combo, qOverload<int>(&QComboBox::activated), &w,
                             [&w, name](int index) {
                                 w.act(w.chooseStep(name, index),
                                       [&w, name, index] { w.m_dialog.choose(name, index); });
                             });
        }
        static void refresh(DialogWindow&, Widget* combo, const RuntimeItem& item, const View&) {
            const QStringList entries = toStringList(item.entries());
            QStringList shown;
            for (int i = 0; i < combo->count(); ++i) {
                shown << combo->itemText(i);
            }
            if (shown != entries) {
                combo->clear();
                combo->addItems(entries);
            }
            if (auto* model = qobject_cast<QStandardItemModel*>(combo->model())) {
                for (int i = 0; i < model->rowCount(); ++i) {
                    model->item(i)->setEnabled(item.entrySensitive(i));
                }
            }
            combo->setCurrentIndex(item.intValue());
        }
    };

    struct Radio {
        using Widget = QGroupBox;
        static Widget* make(DialogWindow&, const nxsim::DlgElement& element, View& view) {
            auto* box = new QGroupBox;
            auto* boxLayout = new QVBoxLayout(box);
            view.radios = new QButtonGroup(box);
            for (std::size_t i = 0; i < element.entries.size(); ++i) {
                auto* button = new QRadioButton(qs(element.entries[i]));
                view.radios->addButton(button, static_cast<int>(i));
                boxLayout->addWidget(button);
            }
            return box;
        }
        static void connect(DialogWindow& w, Widget*, const std::string& name, View& view) {
            QObject::connect(view.radios, &QButtonGroup::idClicked, &w, [&w, name](int index) {
                w.act(w.chooseStep(name, index),
                      [&w, name, index] { w.m_dialog.choose(name, index); });
            });
        }
        static void refresh(DialogWindow& w, Widget* box, const RuntimeItem& item,
                            const View& view) {
            box->setTitle(w.withMnemonic(item.name(), item.label()));
            const QList<QAbstractButton*> buttons = view.radios->buttons();
            for (int i = 0; i < buttons.size(); ++i) {
                QAbstractButton* button = view.radios->button(i);
                if (!button) {
                    continue;
                }
                if (i < static_cast<int>(item.entries().size())) {
                    button->setText(
                        qs(item.entries()[static_cast<std::size_t>(i)]).replace('&', "&&"));
                }
                button->setEnabled(item.entrySensitive(i));
                button->setChecked(i == item.intValue());
            }
        }
    };

    // A one-line field: a text, or a number that its validator keeps to digits.
    struct LineField {
        using Widget = QLineEdit;
        static void connect(DialogWindow& w, Widget* edit, const std::string& name, View&) {
            QObject::connect(edit, &QLineEdit::textEdited, &w, [&w, name](const QString& text) {
                w.typed(name, text.toStdString());
            });
            QObject::connect(edit, &QLineEdit::returnPressed, &w, [&w, name] {
                w.act(w.step(StepKind::Enter, name), [&w, name] { w.m_dialog.enter(name); });
            });
            // A half-typed number ("-") is not taken; leaving the field shows the value in force.
            QObject::connect(edit, &QLineEdit::editingFinished, &w, [&w, edit] {
                if (!w.m_dialog.ended()) {
                    w.refresh(w.m_views.at(w.m_byName.at(edit->objectName().toStdString())));
                }
            });
        }
        static void show(Widget* edit, const QString& value) {
            if (edit->text() != value) {
                edit->setText(value);
            }
        }
    };

    struct Text : LineField {
        static Widget* make(DialogWindow&, const nxsim::DlgElement&, View&) {
            return new QLineEdit;
        }
        static void refresh(DialogWindow&, Widget* edit, const RuntimeItem& item, const View&) {
            show(edit, qs(item.text()));
        }
    };

    struct Integer : LineField {
        static Widget* make(DialogWindow&, const nxsim::DlgElement&, View&) {
            auto* edit = new QLineEdit;
            edit->setValidator(new QIntValidator(edit));
            return edit;
        }
        static void refresh(DialogWindow&, Widget* edit, const RuntimeItem& item, const View&) {
            show(edit, qs(item.valueText()));
        }
    };

    struct Real : LineField {
        static Widget* make(DialogWindow&, const nxsim::DlgElement&, View&) {
            auto* edit = new QLineEdit;
            auto* validator = new QDoubleValidator(edit);
            validator->setLocale(QLocale::c());
            edit->setValidator(validator);
            return edit;
        }
        static void refresh(DialogWindow&, Widget* edit, const RuntimeItem& item, const View&) {
            show(edit, qs(item.valueText()));
        }
    };

    struct MultiText {
        using Widget = QPlainTextEdit;
        static Widget* make(DialogWindow& window, const nxsim::DlgElement& element, View&) {
            auto* edit = new QPlainTextEdit;
            // Tab moves on, as in every other field; Ctrl+Tab types a tab (see eventFilter).
            edit->setTabChangesFocus(true);
            edit->installEventFilter(&window);
            if (element.rows > 0) {
                edit->setMinimumHeight(edit->fontMetrics().lineSpacing() * element.rows + 12);
            }
            return edit;
        }
        static void connect(DialogWindow& w, Widget* edit, const std::string& name, View&) {
            QObject::connect(edit, &QPlainTextEdit::textChanged, &w, [&w, edit, name] {
                if (!w.m_updating) {
                    w.typed(name, edit->toPlainText().toStdString());
                }
            });
        }
        static void refresh(DialogWindow&, Widget* edit, const RuntimeItem& item, const View&) {
            const QString value = qs(joinLines(item.lines()));
            if (edit->toPlainText() != value) {
                edit->setPlainText(value);
            }
        }
    };

    struct Check {
        using Widget = QCheckBox;
        static Widget* make(DialogWindow&, const nxsim::DlgElement&, View&) {
            return new QCheckBox;
        }
        static void connect(DialogWindow& w, Widget* check, const std::string& name, View&) {
            QObject::connect(check, &QCheckBox::clicked, &w, [&w, name](bool on) {
                JournalStep s = w.step(StepKind::Toggle, name);
                s.flag = on;
                w.act(s, [&w, name, on] { w.m_dialog.toggle(name, on); });
            });
        }
        static void refresh(DialogWindow& w, Widget* check, const RuntimeItem& item, const View&) {
            check->setText(w.withMnemonic(item.name(), item.label()));
            check->setChecked(item.toggleValue());
        }
    };

    struct Colour {
        using Widget = QSpinBox;
        static Widget* make(DialogWindow&, const nxsim::DlgElement&, View&) {
            auto* spin = new QSpinBox;
            spin->setRange(0, 216);
            return spin;
        }
        static void connect(DialogWindow& w, Widget* spin, const std::string& name, View&) {
            QObject::connect(spin, qOverload<int>(&QSpinBox::valueChanged), &w,
                             [&w, name](int value) {
                                 if (!w.m_updating) {
                                     w.typed(name, std::to_string(value));
                                 }
                             });
        }
        static void refresh(DialogWindow&, Widget* spin, const RuntimeItem& item, const View&) {
            spin->setRange(std::min(0, item.intValue()), std::max(216, item.intValue()));
            spin->setValue(item.intValue());
        }
    };

    struct Group {
        using Widget = QGroupBox;
        static Widget* make(DialogWindow& window, const nxsim::DlgElement& element, View&) {
            auto* group = new QGroupBox;
            auto* groupLayout = new QVBoxLayout(group);
            for (const nxsim::DlgElement& child : element.children) {
                if (QWidget* widget = window.build(child)) {
                    addToColumn(groupLayout, child, widget);
                }
            }
            groupLayout->addStretch(0);
            return group;
        }
        static void connect(DialogWindow&, Widget*, const std::string&, View&) {}
        static void refresh(DialogWindow&, Widget* group, const RuntimeItem& item, const View&) {
            group->setTitle(qs(item.label()).replace('&', "&&"));
        }
    };

    struct Label {
        using Widget = QLabel;
        static Widget* make(DialogWindow&, const nxsim::DlgElement&, View&) {
            auto* label = new QLabel;
            label->setWordWrap(true);
            return label;
        }
        static void connect(DialogWindow&, Widget*, const std::string&, View&) {}
        static void refresh(DialogWindow&, Widget* label, const RuntimeItem& item, const View&) {
            label->setText(qs(item.label()));
        }
    };

    template <class K>
    static KindAdaptor adaptor() {
        return {[](DialogWindow& window, const nxsim::DlgElement& element, View& view) -> QWidget* {
                    return K::make(window, element, view);
                },
                [](DialogWindow& window, View& view) {
                    K::connect(window, static_cast<typename K::Widget*>(view.control),
                               view.item->name(), view);
                },
                [](DialogWindow& window, const View& view) {
                    K::refresh(window, static_cast<typename K::Widget*>(view.control), *view.item,
                               view);
                }};
    }

    /// The adaptor of an item kind; null for the kinds that are no item (tabs, pages, rows).
    static const KindAdaptor* adaptorFor(ItemKind kind) {
        static const std::map<ItemKind, KindAdaptor> adaptors = {
            {ItemKind::PushButton, adaptor<Button>()},
            {ItemKind::SingleSelectList, adaptor<List>()},
            {ItemKind::OptionMenu, adaptor<Option>()},
            {ItemKind::RadioBox, adaptor<Radio>()},
            {ItemKind::StringItem, adaptor<Text>()},
            {ItemKind::WideString, adaptor<Text>()},
            {ItemKind::IntegerItem, adaptor<Integer>()},
            {ItemKind::RealItem, adaptor<Real>()},
            {ItemKind::MultiTextBox, adaptor<MultiText>()},
            {ItemKind::Toggle, adaptor<Check>()},
            {ItemKind::ColorTool, adaptor<Colour>()},
            {ItemKind::GroupBox, adaptor<Group>()},
            {ItemKind::LabelItem, adaptor<Label>()},
        };
        const auto found = adaptors.find(kind);
        return found == adaptors.end() ? nullptr : &found->second;
    }
};

const DialogWindow::KindAdaptor* DialogWindow::adaptorFor(ItemKind kind) {
    return Kinds::adaptorFor(kind);
}

} // namespace QorfmtHost
