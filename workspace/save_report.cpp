#include "workspace/save_report.h"

#include "base/wildcard_filter.h"
#include "kivug/search_file_list.h"
#include "model/def_document_manager.h"
#include "model/definition_document.h"

#include <NXOpen/ListingWindow.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/Session.hxx>

#include <exception>
#include <string>

namespace QorBorderConf {

namespace {

void writeToListing(const std::string& text) {
    NXOpen::ListingWindow* listing = NXOpen::Session::GetSession()->ListingWindow();
    if (!listing->IsOpen()) {
        listing->Open();
    }
    listing->WriteLine(text);
}

std::string countText(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " finding" : " findings");
}

} // namespace

void SaveReport::report(
    const std::vector<boost::shared_ptr<QorBorder::DefinitionDocument>>& saved) {
    if (saved.empty()) {
        return;
    }
    std::vector<QorLint::OpenDocument> open;
    for (const auto& document : QorBorder::DefDocumentManager().documents()) {
        if (document->modified) {
            open.push_back({document->filename(), document});
        }
    }
    const auto templateFound = [](const std::string& name, const std::string& folder) {
        return !name.empty() && !KivUg::findFile(name, folder, false).empty();
    };
    for (const auto& document : saved) {
        const std::string file = document->filename();
        std::string text;
        // A save that worked stays a save that worked: a check that cannot run says so here.
        try {
            const std::vector<boost::filesystem::path> site =
                KivUg::NxSearchFileList("format_defs").filePaths(Base::WildcardFilter("*.fordef"));
            const std::vector<QorLint::Finding> findings =
                m_check.check(file, document, site, open, templateFound);
            if (findings.empty()) {
                continue;
            }
            text = "Lint of the saved document " + file + ": " + countText(findings.size()) + "\n" +
                   QorLint::formatText(findings);
            text.pop_back();
        } catch (const NXOpen::NXException&) {
            throw;
        } catch (const std::exception& e) {
            text = "Lint of the saved document " + file + " could not run: " + e.what();
        }
        writeToListing(text);
    }
}

} // namespace QorBorderConf
