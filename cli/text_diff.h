#pragma once

#include <string>

namespace QorfmtCli {

/// A unified diff (three lines of context) from `before` to `after`, with the header lines
/// "--- OLDNAME" and "+++ NEWNAME"; "" when the texts are equal. Texts too different to align
/// within reasonable time give one hunk that replaces everything.
std::string unifiedDiff(const std::string& before, const std::string& after,
                        const std::string& oldName, const std::string& newName);

/// The line (from 1) of the first XML comment in `xml`, or 0 when it has none.
int firstCommentLine(const std::string& xml);

} // namespace QorfmtCli
