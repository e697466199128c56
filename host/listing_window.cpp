#include "listing_window.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QVBoxLayout>

#include <stdexcept>

namespace QorfmtHost {

ListingWindow::ListingWindow(QWidget* parent)
    : QWidget(parent, Qt::Window), m_text(new QPlainTextEdit), m_copy(new QPushButton) {
    setObjectName("listing_window");
    setWindowTitle(tr("Listing Window"));
    // Closing the main window ends the host, whatever this window does.
    setAttribute(Qt::WA_QuitOnClose, false);
    m_text->setObjectName("listing");
    m_text->setReadOnly(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(QFont("Monospace"));

    m_copy->setText(tr("&Copy"));
    m_copy->setObjectName("listing_copy");
    m_copy->setEnabled(false);
    auto* saveAs = new QPushButton(tr("&Save As..."));
    saveAs->setObjectName("listing_save_as");
    auto* clear = new QPushButton(tr("C&lear"));
    clear->setObjectName("listing_clear");
    auto* close = new QPushButton(tr("Close"));
    close->setObjectName("listing_close");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_copy);
    buttons->addWidget(saveAs);
    buttons->addWidget(clear);
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_text, 1);
    layout->addLayout(buttons);

    connect(m_text, &QPlainTextEdit::copyAvailable, m_copy, &QPushButton::setEnabled);
    connect(m_copy, &QPushButton::clicked, m_text, &QPlainTextEdit::copy);
    connect(saveAs, &QPushButton::clicked, this, &ListingWindow::saveAs);
    connect(clear, &QPushButton::clicked, this, &ListingWindow::clear);
    connect(close, &QPushButton::clicked, this, &QWidget::hide);
    resize(640, 320);
}

void ListingWindow::append(const QString& text) {
    m_text->moveCursor(QTextCursor::End);
    m_text->insertPlainText(text);
    m_text->moveCursor(QTextCursor::End);
    show();
    raise();
}

void ListingWindow::saveTo(const QString& file) const {
    QSaveFile out(file);
    const QByteArray bytes = m_text->toPlainText().toUtf8();
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.commit()) {
        throw std::runtime_error(file.toStdString() + ": " + out.errorString().toStdString());
    }
}

void ListingWindow::saveAs() {
    const QString file = QFileDialog::getSaveFileName(this, tr("Save Listing Window"), QString(),
                                                      tr("Text files (*.txt)"));
    if (file.isEmpty()) {
        return;
    }
    try {
        saveTo(file);
    } catch (const std::exception& e) {
        QMessageBox::critical(this, tr("Cannot Save Listing"), QString::fromStdString(e.what()));
    }
}

void ListingWindow::clear() {
    m_text->clear();
}

void ListingWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // The text is laid out only now that the window shows: the end of it is what is new.
    m_text->moveCursor(QTextCursor::End);
    m_text->ensureCursorVisible();
    emit visibilityChanged(true);
}

void ListingWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    emit visibilityChanged(false);
}

} // namespace QorfmtHost
