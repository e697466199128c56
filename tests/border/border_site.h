#pragma once

#include "workspace/main_dialog_run.h"

#include <boost/filesystem/path.hpp>

#include <string>

namespace TestUtil {

/// The journal lines that open border `row` of docA for editing, after kOpenDocA.
std::string editBorder(int row);

/// Adds the frame templates, the user's part and docA's drawing sizes described at
/// BorderDialogRun to a workspace site.
void prepareBorderSite(const WorkspaceSite& site);

/// The workspace site with frame templates and a border that has drawing sizes, for the border
/// dialogs' journal tests. On top of WorkspaceSite:
///
/// site/format_defs/frame_templates/
///   a3.prt          one metric A3 sheet (420 x 297 mm); its frame corners are the points 11
///                   (20, 10) and 12 (410, 287), its left and right frame edges the lines 13 and 14
///   d_size.prt      one English D sheet (34 x 22 in)
///   portrait.prt    one custom sheet, height 297, length 210
///   two_sheets.prt  two A4 sheets
///   no_sheet.prt    no drawing at all
///   broken.prt      not a part file
/// site/user.prt     a part of the user's own, to be the display part before the configurator runs
/// docA: border A3 has the drawing sizes "A3 landscape" (a3.prt) and "A3 from elsewhere"
///   (missing.prt, which exists nowhere), core block TB and second language DE; border A4 has
///   none.
class BorderDialogRun : public MainDialogRun {
protected:
    BorderDialogRun();

    /// Makes site/user.prt the display part, as if the user had it open in NX.
    void displayUserPart();
    boost::filesystem::path userPart() const { return site.site() / "user.prt"; }
    boost::filesystem::path frameTemplate(const std::string& name) const {
        return site.site() / "format_defs" / "frame_templates" / name;
    }
};

} // namespace TestUtil
