#include "border/frame_template.h"

#include "kivug/search_file_list.h"
#include "ui/message_dialogs.h"

#include <NXOpen/BasePart.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/PartLoadStatus.hxx>
#include <NXOpen/Session.hxx>

#include <memory>

namespace QorBorderConf {

boost::filesystem::path findFrameTemplate(const std::string& name) {
    return KivUg::findFile(name, kFrameTemplateFolder, false);
}

void reportTemplateNotFound(const std::string& name) {
    KivNX::UI::errorDialog("Template Not Found", "Template file '" + name + "' was not found.");
}

OpenedTemplate openAsDisplayPart(const boost::filesystem::path& file) {
    NXOpen::PartCollection* parts = NXOpen::Session::GetSession()->Parts();
    OpenedTemplate result;
    result.previous = parts->Display();
    NXOpen::PartLoadStatus* status = nullptr;
    result.opened = parts->OpenDisplay(file.string(), &status);
    std::unique_ptr<NXOpen::PartLoadStatus> owned(status);
    return result;
}

void restoreDisplayPart(NXOpen::BasePart* previous, NXOpen::BasePart* opened) {
    if (previous) {
        NXOpen::PartLoadStatus* status = nullptr;
        NXOpen::Session::GetSession()->Parts()->SetDisplay(previous, false, false, &status);
        std::unique_ptr<NXOpen::PartLoadStatus> owned(status);
    }
    if (opened && opened != previous) {
        opened->Close(NXOpen::BasePart::CloseWholeTreeFalse,
                      NXOpen::BasePart::CloseModifiedDontCloseModified, nullptr);
    }
}

} // namespace QorBorderConf
