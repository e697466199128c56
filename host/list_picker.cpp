#include "list_picker.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace QorfmtHost {

ListPicker::ListPicker(const std::string& title, const std::string& prompt,
                       const std::vector<std::string>& items, int initialSelection, QWidget* parent)
    : QDialog(parent), m_list(new QListWidget) {
    setWindowTitle(QString::fromStdString(title));
    setObjectName("list_picker");
    // Modal to the dialog that asks, not to the listing window.
    setWindowModality(Qt::WindowModal);
    auto* layout = new QVBoxLayout(this);
    if (!prompt.empty()) {
        layout->addWidget(new QLabel(QString::fromStdString(prompt)));
    }
    for (const std::string& item : items) {
        m_list->addItem(QString::fromStdString(item));
    }
    if (initialSelection >= 0 && initialSelection < m_list->count()) {
        m_list->setCurrentRow(initialSelection);
    }
    layout->addWidget(m_list);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    layout->addWidget(buttons);
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    ok->setEnabled(m_list->currentRow() >= 0);
    if (items.empty()) {
        // Nothing to choose: the empty list is shown as it is, and Cancel is the only way out.
        ok->hide();
        m_list->setEnabled(false);
        buttons->button(QDialogButtonBox::Cancel)->setFocus();
    }
    connect(m_list, &QListWidget::currentRowChanged, ok,
            [ok](int row) { ok->setEnabled(row >= 0); });
    connect(m_list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

int ListPicker::chosenRow() const {
    return result() == QDialog::Accepted ? m_list->currentRow() : -1;
}

} // namespace QorfmtHost
