#pragma once

#include "workspace_site.h"

#include "model/definition_document.h"
#include "testutil/journal.h"

#include <nxsim/journal_runner.h>
#include <nxsim/platform.h>

#include <boost/shared_ptr.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TestUtil {

/// The start of a journal that opens docA, the first file of the installation, in the main
/// dialog and leaves the main dialog open for the lines that follow.
inline const char* const kOpenDocA = R"J(run
dialog qorborder_config_main
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
)J";

/// The IDs of a document's border layouts, in its order.
inline std::vector<std::string> borderIds(const QorBorder::DefinitionDocument& document) {
    std::vector<std::string> ids;
    for (const auto& border : document.borderLayoutTypes(QorBorder::AllUnits)) {
        ids.push_back(border->id);
    }
    return ids;
}

/// The IDs of a document's block layouts, in its order.
inline std::vector<std::string> blockIds(const QorBorder::DefinitionDocument& document) {
    std::vector<std::string> ids;
    for (const auto& block : document.blockLayouts(QorBorder::AllUnits)) {
        ids.push_back(block->id);
    }
    return ids;
}

/// The configurator library, run as NX runs it, on a fresh workspace site: the fixture of the
/// main dialog's and its pages' journal tests.
class MainDialogRun : public ::testing::Test {
protected:
    MainDialogRun() : library(QORFMT_CONFIGURE_LIBRARY) { nxsim::reset(); }

    /// Replays `journal`; each `run` line calls the library's ufusr.
    nxsim::JournalResult run(const std::string& journal) {
        return runJournal(
            journal, [this] { library.callUfusr(); }, site.site());
    }

    /// The document `name` of the installation as it is on disk now.
    boost::shared_ptr<QorBorder::DefinitionDocument> onDisk(const std::string& name) const {
        return QorBorder::DefinitionDocument::load(site.document(name));
    }

    WorkspaceSite site;
    nxsim::UserFunctionLibrary library;
};

} // namespace TestUtil
