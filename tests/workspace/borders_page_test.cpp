#include "main_dialog_run.h"

#include <nxsim/platform.h>

#include <gtest/gtest.h>

namespace {

using BordersPage = TestUtil::MainDialogRun;
using TestUtil::kOpenDocA;

TEST_F(BordersPage, WithoutActiveDocumentTheListIsEmptyAndEveryControlInsensitive) {
    EXPECT_JOURNAL_PASSES(run(R"J(run
dialog qorborder_config_main
  expect items BORDERLIST []
  expect sensitive BORDERLIST no
  expect sensitive NEWBORDER no
  expect sensitive EDITBORDER no
  expect sensitive COPYBORDER no
  expect sensitive COPYBORDERFROM no
  expect sensitive DELETEBORDER no
  cancel
)J"));
}

TEST_F(BordersPage, DeletingABorderAsksNothing) {
    EXPECT_JOURNAL_PASSES(run(std::string(kOpenDocA) + R"J(
  expect sensitive DELETEBORDER no
  select BORDERLIST 1
  expect sensitive DELETEBORDER yes
  press DELETEBORDER
  expect items BORDERLIST ["A3"]
  expect sensitive DELETEBORDER no
  expect sensitive SAVE_FILE yes
  cancel
)J"));
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

} // namespace
