#pragma once

#include <QWidget>

#include <string>

class QPlainTextEdit;
class QPushButton;

namespace QorfmtHost {

/// The CAD system's listing window: a window of its own, never blocked by the user function's
/// modal dialogs, so that its text can be scrolled, selected, copied and saved while they are
/// up. It keeps what was written for as long as the host runs; Clear empties the view only.
class ListingWindow : public QWidget {
    Q_OBJECT

public:
    explicit ListingWindow(QWidget* parent = nullptr);

    QPlainTextEdit& text() const { return *m_text; }
    /// Adds text at the end and raises the window (without taking the focus from a dialog).
    void append(const QString& text);
    /// Writes the shown text to `file`; throws std::runtime_error naming the file and the reason.
    void saveTo(const QString& file) const;

public slots:
    /// Asks for a file and saves the text into it; a failure is shown in a message box.
    void saveAs();
    void clear();

signals:
    /// The window was shown or hidden by the user (its close box) or by a write.
    void visibilityChanged(bool visible);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QPlainTextEdit* m_text;
    QPushButton* m_copy;
};

} // namespace QorfmtHost
