#include "main_dialog_run.h"

#include <nxsim/platform.h>

#include <gtest/gtest.h>

namespace {

using BlocksPage = TestUtil::MainDialogRun;
using TestUtil::kOpenDocA;

TEST_F(BlocksPage, WithoutActiveDocumentTheListIsEmptyAndEveryControlInsensitive) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  expect items BLOCKLIST []
  expect sensitive BLOCKLIST no
  expect sensitive NEWBLOCK no
  expect sensitive EDITBLOCK no
  expect sensitive COPYBLOCK no
  expect sensitive COPYBLOCKFROM no
  expect sensitive DELETEBLOCK no
  cancel
)J"));
}

TEST_F(BlocksPage, DeletingABlockAsksNothingAndRefillsTheLocationFilter) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect sensitive DELETEBLOCK no
  select BLOCKLIST 0
  expect sensitive DELETEBLOCK yes
  press DELETEBLOCK
  expect items BLOCKLIST ["PL"]
  expect sensitive DELETEBLOCK no
  expect items BLOCK_FILTER ["PL"]
  expect items LOCATION_LIST ["P1(Style ID: Any Style)"]
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

} // namespace
