#include "kivug/search_file_list.h"

#include "kiv/site.h"
#include "testutil/temp_dir.h"

#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>

#include <string>
#include <vector>

namespace fs = boost::filesystem;

namespace {

using Base::WildcardFilter;
using KivUg::NxSearchFileList;

/// A site with a common and a current configuration, plus two extra search-path roots.
class SearchFileList : public ::testing::Test {
protected:
    SearchFileList() {
        site = dir.mkdir("site");
        dir.mkdir("site/configurations/common/nx/format_defs");
        dir.write("site/configurations/plant/configuration.conf", "common = common\n");
        dir.mkdir("site/configurations/plant/nx/format_defs");
        env.set("QORFMT_SITE", site.string());
        env.set("QORFMT_CONFIGURATION", "plant");
        env.set("QORFMT_SEARCH_PATH", nullptr);
    }

    std::vector<fs::path> fordefs() const {
        return NxSearchFileList("format_defs").filePaths(WildcardFilter("*.fordef"));
    }

    TestUtil::TempDir dir;
    TestUtil::ScopedEnvironment env;
    fs::path site;
};

TEST_F(SearchFileList, SearchesPathThenSiteThenCommonThenCurrentConfiguration) {
    dir.write("extra/format_defs/e.fordef");
    dir.write("site/format_defs/s.fordef");
    dir.write("site/configurations/common/nx/format_defs/c.fordef");
    dir.write("site/configurations/plant/nx/format_defs/p.fordef");
    env.set("QORFMT_SEARCH_PATH", (dir.path() / "extra").string());
    const std::vector<fs::path> expected{
        dir.path() / "extra/format_defs/e.fordef",
        site / "format_defs/s.fordef",
        site / "configurations/common/nx/format_defs/c.fordef",
        site / "configurations/plant/nx/format_defs/p.fordef",
    };
    EXPECT_EQ(fordefs(), expected);
}

TEST_F(SearchFileList, SearchPathRootsKeepTheirOrder) {
    dir.write("b/format_defs/b.fordef");
    dir.write("a/format_defs/a.fordef");
    env.set("QORFMT_SEARCH_PATH",
            ((dir.path() / "b").string() + ":" + (dir.path() / "a").string()));
    const auto files = fordefs();
    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files[0].filename(), "b.fordef");
    EXPECT_EQ(files[1].filename(), "a.fordef");
}

TEST_F(SearchFileList, FilesOfOneDirectoryComeSortedByName) {
    dir.write("site/format_defs/zz.fordef");
    dir.write("site/format_defs/aa.fordef");
    dir.write("site/format_defs/mm.fordef");
    const auto files = fordefs();
    ASSERT_EQ(files.size(), 3u);
    EXPECT_EQ(files[0].filename(), "aa.fordef");
    EXPECT_EQ(files[1].filename(), "mm.fordef");
    EXPECT_EQ(files[2].filename(), "zz.fordef");
}

TEST_F(SearchFileList, OnlyRegularFilesMatchingTheFilterAreListed) {
    dir.write("site/format_defs/a.fordef");
    dir.write("site/format_defs/b.prt");
    dir.write("site/format_defs/c.FORDEF");
    dir.mkdir("site/format_defs/folder.fordef");
    const auto files = fordefs();
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(files[0], site / "format_defs/a.fordef");
}

TEST_F(SearchFileList, DuplicateRootsAreSearchedOnce) {
    dir.write("site/format_defs/s.fordef");
    // The site again, spelled three ways, and through a link.
    fs::create_directory_symlink(site, dir.path() / "link");
    env.set("QORFMT_SEARCH_PATH", site.string() + ":" + site.string() + "/:" + site.string() +
                                      "/../site:" + (dir.path() / "link").string());
    const auto files = fordefs();
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(files[0].filename(), "s.fordef");
}

TEST_F(SearchFileList, FileNamesFoundInTwoRootsAreOfferedOnceSortedByBytes) {
    dir.write("site/format_defs/b.fordef");
    dir.write("site/format_defs/a.fordef");
    dir.write("site/configurations/common/nx/format_defs/b.fordef");
    dir.write("site/configurations/plant/nx/format_defs/B.fordef");
    EXPECT_EQ(fordefs().size(), 4u);
    EXPECT_EQ(NxSearchFileList("format_defs").fileNames(WildcardFilter("*.fordef")),
              (std::vector<std::string>{"B.fordef", "a.fordef", "b.fordef"}));
    EXPECT_TRUE(NxSearchFileList("format_defs").fileNames(WildcardFilter("*.prt")).empty());
}

TEST_F(SearchFileList, CommonConfigurationEqualToCurrentIsSearchedOnce) {
    dir.write("site/configurations/plant/configuration.conf", "common = plant\n");
    dir.write("site/configurations/plant/nx/format_defs/p.fordef");
    EXPECT_EQ(fordefs().size(), 1u);
}

TEST_F(SearchFileList, MissingAndUnreadableDirectoriesAreSkipped) {
    dir.write("good/format_defs/g.fordef");
    dir.write("file_not_dir/format_defs", "a file where a folder should be");
    dir.mkdir("dangling");
    fs::create_directory_symlink(dir.path() / "nothing", dir.path() / "dangling/format_defs");
    dir.mkdir("loop");
    fs::create_directory_symlink(dir.path() / "loop/format_defs", dir.path() / "loop/format_defs");
    const fs::path locked = dir.mkdir("locked/format_defs");
    dir.write("locked/format_defs/l.fordef");
    fs::permissions(locked, fs::no_perms);
    env.set("QORFMT_SEARCH_PATH",
            (dir.path() / "missing").string() + ":" + (dir.path() / "file_not_dir").string() + ":" +
                (dir.path() / "dangling").string() + ":" + (dir.path() / "loop").string() + ":" +
                (dir.path() / "locked").string() + ":" + (dir.path() / "good").string());
    std::vector<fs::path> files;
    ASSERT_NO_THROW(files = fordefs());
    // The locked folder can only be read by a privileged user; everything else is skipped.
    ASSERT_FALSE(files.empty());
    EXPECT_EQ(files.back(), dir.path() / "good/format_defs/g.fordef");
    for (const fs::path& file : files) {
        EXPECT_TRUE(file.filename() == "g.fordef" || file.filename() == "l.fordef") << file;
    }
}

TEST_F(SearchFileList, NamesWithBlanksAndNonAsciiBytesAreListed) {
    dir.write("site/format_defs/my plan.fordef");
    dir.write("site/format_defs/Schriftfeld \xc3\xa4\xc3\xb6\xc3\xbc.fordef");
    dir.write("with blank \xc3\xa9/format_defs/x y.fordef");
    env.set("QORFMT_SEARCH_PATH", (dir.path() / "with blank \xc3\xa9").string());
    const auto files = fordefs();
    ASSERT_EQ(files.size(), 3u);
    EXPECT_EQ(files[0], dir.path() / "with blank \xc3\xa9/format_defs/x y.fordef");
    EXPECT_EQ(files[1].filename(), "Schriftfeld \xc3\xa4\xc3\xb6\xc3\xbc.fordef");
    EXPECT_EQ(files[2].filename(), "my plan.fordef");
}

TEST_F(SearchFileList, EmptySearchPathEntriesAreIgnored) {
    dir.write("site/format_defs/s.fordef");
    env.set("QORFMT_SEARCH_PATH", "::");
    EXPECT_EQ(fordefs().size(), 1u);
    env.set("QORFMT_SEARCH_PATH", "");
    EXPECT_EQ(fordefs().size(), 1u);
}

TEST_F(SearchFileList, EmptySearchPathWithoutSiteFindsNothing) {
    env.set("QORFMT_SITE", nullptr);
    env.set("QORFMT_CONFIGURATION", nullptr);
    env.set("QORFMT_SEARCH_PATH", nullptr);
    EXPECT_TRUE(KivUg::searchRoots().empty());
    EXPECT_TRUE(fordefs().empty());
    EXPECT_TRUE(KivUg::findFile("a3.prt", "format_defs/frame_templates", false).empty());
}

TEST_F(SearchFileList, NestedRelativeDirectoryIsSearched) {
    dir.write("site/format_defs/frame_templates/a3.prt");
    dir.write("site/format_defs/frame_templates/a4.prt");
    dir.write("site/format_defs/block_templates/title.prt");
    const auto files =
        NxSearchFileList("format_defs/frame_templates").filePaths(WildcardFilter("*.prt"));
    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files[0].filename(), "a3.prt");
}

TEST_F(SearchFileList, FindFileReturnsTheFirstAlongTheSearch) {
    dir.write("site/format_defs/frame_templates/a3.prt", "site");
    dir.write("site/configurations/plant/nx/format_defs/frame_templates/a3.prt", "plant");
    dir.write("first/format_defs/frame_templates/other.prt");
    env.set("QORFMT_SEARCH_PATH", (dir.path() / "first").string());
    EXPECT_EQ(KivUg::findFile("a3.prt", "format_defs/frame_templates", false),
              site / "format_defs/frame_templates/a3.prt");
}

TEST_F(SearchFileList, FindFileOfMissingNameIsEmptyOrThrowsWhenRequired) {
    EXPECT_TRUE(KivUg::findFile("none.prt", "format_defs/frame_templates", false).empty());
    try {
        KivUg::findFile("none.prt", "format_defs/frame_templates", true);
        FAIL() << "expected an exception";
    } catch (const std::runtime_error& error) {
        const std::string text = error.what();
        EXPECT_NE(text.find("file 'none.prt' not found in " +
                            (site / "format_defs/frame_templates").string()),
                  std::string::npos)
            << text;
    }
}

TEST_F(SearchFileList, FindFileIgnoresDirectoriesOfThatName) {
    dir.mkdir("site/format_defs/frame_templates/a3.prt");
    dir.write("site/configurations/plant/nx/format_defs/frame_templates/a3.prt");
    EXPECT_EQ(KivUg::findFile("a3.prt", "format_defs/frame_templates", false),
              site / "configurations/plant/nx/format_defs/frame_templates/a3.prt");
}

TEST_F(SearchFileList, MalformedSiteSettingsAreReported) {
    dir.write("site/site.conf", "nonsense\n");
    EXPECT_THROW(NxSearchFileList("format_defs"), Kiv::ConfigurationError);
}

} // namespace
