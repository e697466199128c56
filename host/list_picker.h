#pragma once

#include <QDialog>

#include <string>
#include <vector>

class QListWidget;

namespace QorfmtHost {

/// The platform's list picker: a prompt, a list and OK / Cancel. A double-click chooses. Given no
/// entries it shows its title, prompt and empty list with Cancel only.
class ListPicker : public QDialog {
    Q_OBJECT

public:
    ListPicker(const std::string& title, const std::string& prompt,
               const std::vector<std::string>& items, int initialSelection,
               QWidget* parent = nullptr);

    /// The chosen row once accepted; -1 when cancelled or nothing is selected.
    int chosenRow() const;
    QListWidget* list() const { return m_list; }

private:
    QListWidget* m_list;
};

} // namespace QorfmtHost
