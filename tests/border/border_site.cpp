#include "border_site.h"

#include "model/border_layout.h"
#include "model/definition_document.h"

#include <NXOpen/Part.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/PartLoadStatus.hxx>
#include <NXOpen/Session.hxx>

#include <memory>

namespace TestUtil {

namespace {

QorBorder::DrawingSize drawingSize(const std::string& name, const std::string& description,
                                   const std::string& templateFile) {
    QorBorder::DrawingSize size;
    size.name = name;
    size.description = description;
    size.templateFile = templateFile;
    return size;
}

} // namespace

std::string editBorder(int row) {
    return "  select BORDERLIST " + std::to_string(row) +
           "\n  press EDITBORDER\n    dialog qorborder_config_border\n";
}

void prepareBorderSite(const WorkspaceSite& site) {
    const TempDir& dir = site.dir();
    dir.write("site/format_defs/frame_templates/a3.prt", "qorfmt-part 1\n"
                                                         "units mm\n"
                                                         "drawing SHEET1 metric A3\n"
                                                         "point 11 20 10 0\n"
                                                         "point 12 410 287 0\n"
                                                         "line 13 20 10 0 20 287 0\n"
                                                         "line 14 410 10 0 410 287 0\n");
    dir.write("site/format_defs/frame_templates/d_size.prt",
              "qorfmt-part 1\nunits inch\ndrawing SHEET1 english D\n");
    dir.write("site/format_defs/frame_templates/portrait.prt",
              "qorfmt-part 1\ndrawing SHEET1 custom 297 210\n");
    dir.write("site/format_defs/frame_templates/two_sheets.prt",
              "qorfmt-part 1\ndrawing SHEET1 metric A4\ndrawing SHEET2 metric A4\n");
    dir.write("site/format_defs/frame_templates/no_sheet.prt", "qorfmt-part 1\npoint 1 0 0 0\n");
    dir.write("site/format_defs/frame_templates/broken.prt", "this is no part\n");
    dir.write("site/user.prt", "qorfmt-part 1\ndrawing MINE custom 100 100\n");

    auto docA = QorBorder::DefinitionDocument::load(site.document("docA.fordef"));
    auto a3 = docA->getBorderLayout("A3");
    a3->addDrawingSize(drawingSize("A3", "A3 landscape", "a3.prt"));
    a3->addDrawingSize(drawingSize("A3X", "A3 from elsewhere", "missing.prt"));
    a3->coreRequiredBlocks = {"TB"};
    a3->secondLanguages = {"DE"};
    docA->save(site.document("docA.fordef"));
}

BorderDialogRun::BorderDialogRun() {
    prepareBorderSite(site);
}

void BorderDialogRun::displayUserPart() {
    NXOpen::PartLoadStatus* status = nullptr;
    NXOpen::Session::GetSession()->Parts()->OpenDisplay(userPart().string(), &status);
    std::unique_ptr<NXOpen::PartLoadStatus> owned(status);
}

} // namespace TestUtil
