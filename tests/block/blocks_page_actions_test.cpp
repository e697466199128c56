// The blocks page's New, Edit, Copy and Copy From Document, through the block layout dialog, run
// as NX runs the configurator.

#include "main_dialog_run.h"

#include <nxsim/platform.h>

#include <boost/filesystem/fstream.hpp>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

using BlocksPageActions = TestUtil::MainDialogRun;
using TestUtil::kOpenDocA;

std::string bytesOf(const boost::filesystem::path& file) {
    // Through rdbuf: a string built from stream iterators makes g++ -O2 warn inside libstdc++.
    boost::filesystem::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

TEST_F(BlocksPageActions, WithADocumentNewAndCopyFromAreSensitiveEditAndCopyNeedASelection) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect sensitive NEWBLOCK yes
  expect sensitive COPYBLOCKFROM yes
  expect sensitive EDITBLOCK no
  expect sensitive COPYBLOCK no
  select BLOCKLIST 1
  expect sensitive EDITBLOCK yes
  expect sensitive COPYBLOCK yes
  cancel
)J"));
}

TEST_F(BlocksPageActions, OkOfANewBlockAddsItMarksTheDocumentModifiedAndOffersItAsLocationFilter) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect sensitive SAVE_FILE no
  press NEWBLOCK
    dialog qorborder_config_block
    expect value BLOCK_ID ""
    set BLOCK_ID "REVBLK"
    set DESCRIPTION "Revision block"
    ok
  expect items BLOCKLIST ["TB", "PL", "REVBLK"]
  expect sensitive SAVE_FILE yes
  expect items BLOCK_FILTER ["TB", "PL", "REVBLK"]
  press SAVE_FILE
  ok
)J"));
    const auto saved = onDisk("docA.fordef");
    EXPECT_EQ(TestUtil::blockIds(*saved), (std::vector<std::string>{"TB", "PL", "REVBLK"}));
    EXPECT_EQ(saved->getBlockLayout("REVBLK")->description, "Revision block");
}

TEST_F(BlocksPageActions, CancelOfANewBlockAddsNothingAndLeavesTheDocumentUnmodified) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press NEWBLOCK
    dialog qorborder_config_block
    set BLOCK_ID "DROPPED"
    press ADD_FIELD
      dialog qorborder_config_field
      set ID "F"
      ok
    cancel
  expect items BLOCKLIST ["TB", "PL"]
  expect sensitive SAVE_FILE no
  cancel
)J"));
}

TEST_F(BlocksPageActions, OkOfEditBlockChangesTheLayoutInPlaceAndMarksTheDocumentModified) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select BLOCKLIST 1
  press EDITBLOCK
    dialog qorborder_config_block
    expect value BLOCK_ID "PL"
    expect value DESCRIPTION "Block PL"
    set BLOCK_ID "PARTS"
    ok
  expect items BLOCKLIST ["TB", "PARTS"]
  expect selected BLOCKLIST -1
  expect sensitive SAVE_FILE yes
  expect items BLOCK_FILTER ["TB", "PARTS"]
  press SAVE_FILE
  ok
)J"));
    EXPECT_EQ(TestUtil::blockIds(*onDisk("docA.fordef")),
              (std::vector<std::string>{"TB", "PARTS"}));
}

// Cancel of Edit leaves the attributes and the modified flag as they were, but what the list
// buttons did to the layout stays in the document: here the added field.
TEST_F(BlocksPageActions,
       CancelOfEditBlockKeepsTheModifiedFlagAndTheListChangesButNotTheAttributes) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select BLOCKLIST 0
  press EDITBLOCK
    dialog qorborder_config_block
    set BLOCK_ID "RENAMED"
    set DESCRIPTION "Changed"
    press ADD_FIELD
      dialog qorborder_config_field
      set ID "TITLE"
      ok
    cancel
  expect items BLOCKLIST ["TB", "PL"]
  expect selected BLOCKLIST -1
  expect sensitive SAVE_FILE no
  select BLOCKLIST 0
  press EDITBLOCK
    dialog qorborder_config_block
    expect value BLOCK_ID "TB"
    expect value DESCRIPTION "Block TB"
    expect items FIELDS ["TITLE"]
    cancel
  cancel
)J"));
}

TEST_F(BlocksPageActions, CopyKeepsTheSourceIdAndIsRefusedAsDuplicateUntilItIsChanged) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select BLOCKLIST 0
  press COPYBLOCK
    dialog qorborder_config_block
    expect value BLOCK_ID "TB"
    expect value DESCRIPTION "Block TB"
    ok
    message error "Duplicate Error" "A block with ID was found. Block ID must be unique."
    set BLOCK_ID "TB2"
    ok
  expect items BLOCKLIST ["TB", "PL", "TB2"]
  expect sensitive SAVE_FILE yes
  expect items BLOCK_FILTER ["TB", "PL", "TB2"]
  cancel
)J"));
}

TEST_F(BlocksPageActions, CopyFromDocumentDoesNotOfferTheActiveOneAndLeavesTheSourceFileUnchanged) {
    const std::string sourceBefore = bytesOf(site.document("docB.fordef"));
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press COPYBLOCKFROM
    dialog qorfmt_config_selectfile.dlg
    expect title "Copy Block"
    expect items FILE_LIST ["docB.fordef"]
    select FILE_LIST 0
    expect items OBJECT_LIST ["RB"]
    select OBJECT_LIST 0
    ok
    dialog qorborder_config_block
    expect value BLOCK_ID "RB"
    set DESCRIPTION "Copied from docB"
    # The source document is open now, so its block's ID is taken.
    ok
    message error "Duplicate Error" "A block with ID was found. Block ID must be unique."
    set BLOCK_ID "RB_COPY"
    ok
  expect items BLOCKLIST ["TB", "PL", "RB_COPY"]
  expect sensitive SAVE_FILE yes
  press SAVE_FILE
  ok
)J"));
    EXPECT_EQ(bytesOf(site.document("docB.fordef")), sourceBefore);
    const auto saved = onDisk("docA.fordef");
    ASSERT_EQ(TestUtil::blockIds(*saved), (std::vector<std::string>{"TB", "PL", "RB_COPY"}));
    EXPECT_EQ(saved->getBlockLayout("RB_COPY")->description, "Copied from docB");
    EXPECT_EQ(TestUtil::blockIds(*onDisk("docB.fordef")), (std::vector<std::string>{"RB"}));
    EXPECT_EQ(onDisk("docB.fordef")->getBlockLayout("RB")->description, "Block RB");
}

TEST_F(BlocksPageActions, CopyFromDocumentCancelledInTheBlockDialogAddsNothing) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press COPYBLOCKFROM
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    select OBJECT_LIST 0
    ok
    dialog qorborder_config_block
    cancel
  expect items BLOCKLIST ["TB", "PL"]
  expect sensitive SAVE_FILE no
  cancel
)J"));
}

// Copying from another document needs one of its blocks: the file alone cannot be confirmed,
// and cancelling the file select dialog opens no block dialog.
TEST_F(BlocksPageActions, CopyFromDocumentCannotBeConfirmedWithoutAChosenBlock) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  press COPYBLOCKFROM
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    expect items OBJECT_LIST ["RB"]
    expect sensitive OK no
    select OBJECT_LIST 0
    expect sensitive OK yes
    cancel
  expect items BLOCKLIST ["TB", "PL"]
  expect sensitive SAVE_FILE no
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

TEST_F(BlocksPageActions, DeletingAsksNothingAndOnlyNotSavingKeepsTheBlock) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  select BLOCKLIST 0
  press DELETEBLOCK
  expect items BLOCKLIST ["PL"]
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
    EXPECT_EQ(TestUtil::blockIds(*onDisk("docA.fordef")), (std::vector<std::string>{"TB", "PL"}));
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  press OPEN_FILE
    dialog qorfmt_config_selectfile.dlg
    select FILE_LIST 0
    ok
  expect items BLOCKLIST ["PL"]
  press SAVE_FILE
  ok
)J"));
    EXPECT_EQ(TestUtil::blockIds(*onDisk("docA.fordef")), (std::vector<std::string>{"PL"}));
}

} // namespace
