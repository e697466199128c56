#pragma once

// Small helpers shared by the dialog window and its item kinds: texts between the platform's
// narrow strings and Qt, and how a column of a dialog shares out its height.

#include <nxsim/dlg.h>

#include <QBoxLayout>
#include <QString>
#include <QStringList>

#include <string>
#include <vector>

namespace QorfmtHost {

QString qs(const std::string& text);
/// The lines joined with line feeds.
std::string joinLines(const std::vector<std::string>& lines);
QStringList toStringList(const std::vector<std::string>& entries);
/// How much of a taller dialog's extra height `element` takes: its rows where it is a list or a
/// multi-line text, else its children's.
int growth(const nxsim::DlgElement& element);
/// Lays out `widget` of `element` in a column, with the stretch growth() gives it.
void addToColumn(QBoxLayout* layout, const nxsim::DlgElement& element, QWidget* widget);

} // namespace QorfmtHost
