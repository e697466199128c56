// PO catalogs written and read through libgettextpo.
#include "po_catalog.h"

#include "site.h"

#include "testutil/temp_dir.h"

#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>

#include <sys/stat.h>

using namespace QorfmtCli;
namespace fs = boost::filesystem;

namespace {

PoCatalog sampleCatalog() {
    PoCatalog catalog;
    catalog.language = "DE";
    catalog.project = "blocks.fordef";
    PoEntry plain;
    plain.context = "TB|KIND|ASSY";
    plain.source = "Assembly drawing";
    plain.translation = "Zusammenbauzeichnung";
    plain.comment = "Block TB, field KIND, choice ASSY (Assembly)";
    plain.referenceFile = "blocks.fordef";
    plain.referenceLine = 12;
    PoEntry awkward;
    awkward.context = "TB|NOTICE|STD";
    awkward.source = "Two lines,\n\"quoted\" and \\ with a tab\there";
    awkward.translation = "Zwei Zeilen,\n\"zitiert\" und \\ mit Tab\thier, Größe";
    PoEntry open;
    open.context = "TB|MATERIAL|";
    open.source = "MATERIAL";
    open.fuzzy = true;
    open.translation = "WERKSTOFF";
    catalog.entries = {plain, awkward, open};
    return catalog;
}

std::string errorOf(const fs::path& file) {
    try {
        readPoFile(file);
    } catch (const InputError& e) {
        return e.what();
    }
    return "read without an error";
}

} // namespace

TEST(PoCatalog, AWrittenCatalogReadsBackEntryByEntry) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "DE.po";
    const PoCatalog written = sampleCatalog();
    writePoFile(written, file);
    const PoCatalog read = readPoFile(file);
    EXPECT_EQ(read.language, "DE");
    EXPECT_EQ(read.project, "blocks.fordef");
    ASSERT_EQ(read.entries.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(read.entries[i].context, written.entries[i].context);
        EXPECT_EQ(read.entries[i].source, written.entries[i].source);
        EXPECT_EQ(read.entries[i].translation, written.entries[i].translation);
        EXPECT_EQ(read.entries[i].fuzzy, written.entries[i].fuzzy);
        EXPECT_FALSE(read.entries[i].hasPlural);
    }
    EXPECT_EQ(read.entries[0].comment, "Block TB, field KIND, choice ASSY (Assembly)\n");
    const std::string text = TestUtil::readFile(file);
    EXPECT_NE(text.find("#: blocks.fordef:12\nmsgctxt \"TB|KIND|ASSY\"\n"), std::string::npos)
        << text;
    EXPECT_NE(text.find("#, fuzzy\nmsgctxt \"TB|MATERIAL|\"\n"), std::string::npos) << text;
}

TEST(PoCatalog, EntriesKnowTheLineWhereTheyStart) {
    TestUtil::TempDir dir;
    const fs::path file = dir.write("DE.po", "# a translator's comment\n"
                                             "msgid \"\"\n"
                                             "msgstr \"Language: DE\\n\"\n"
                                             "\n"
                                             "#. extracted\n"
                                             "msgctxt \"A|B|\"\n"
                                             "msgid \"first\"\n"
                                             "msgstr \"erste\"\n"
                                             "\n"
                                             "#~ msgid \"gone\"\n"
                                             "#~ msgstr \"weg\"\n"
                                             "\n"
                                             "msgid \"\"\n"
                                             "\"no context\"\n"
                                             "msgstr \"\"\n"
                                             "\n"
                                             "#| msgctxt \"old\"\n"
                                             "#| msgid \"older\"\n"
                                             "msgctxt \"A|C|\"\n"
                                             "msgid \"third\"\n"
                                             "msgstr \"\"\n");
    const PoCatalog catalog = readPoFile(file);
    ASSERT_EQ(catalog.entries.size(), 3u);
    EXPECT_EQ(catalog.entries[0].line, 6);
    EXPECT_EQ(catalog.entries[1].line, 13);
    EXPECT_EQ(catalog.entries[1].source, "no context");
    EXPECT_EQ(catalog.entries[2].line, 19);
}

TEST(PoCatalog, AMalformedCatalogIsRefusedWithFileAndLine) {
    TestUtil::TempDir dir;
    const fs::path file =
        dir.write("bad.po", "msgid \"a\"\nmsgstr \"b\"\n\nmsgid \"c\"\nmsgstr\nmsgid \"d\"\n");
    EXPECT_EQ(errorOf(file), file.string() + ":6: syntax error");
}

TEST(PoCatalog, TheSameMessageTwiceIsRefused) {
    TestUtil::TempDir dir;
    const fs::path file = dir.write("twice.po", "msgctxt \"A|B|\"\nmsgid \"a\"\nmsgstr \"b\"\n\n"
                                                "msgctxt \"A|B|\"\nmsgid \"a\"\nmsgstr \"c\"\n");
    EXPECT_NE(errorOf(file).find("duplicate message definition"), std::string::npos)
        << errorOf(file);
}

TEST(PoCatalog, AMessageGivenTwiceNamesBothPlaces) {
    TestUtil::TempDir dir;
    const fs::path file = dir.write("twice.po", "msgctxt \"A|B|\"\nmsgid \"a\"\nmsgstr \"b\"\n\n"
                                                "msgctxt \"A|B|\"\nmsgid \"a\"\nmsgstr \"c\"\n");
    const std::string error = errorOf(file);
    EXPECT_EQ(error.rfind(
                  file.string() + ":6: duplicate message definition (" + file.string() + ":1: ", 0),
              0u)
        << error;
    EXPECT_NE(error.find("first definition"), std::string::npos) << error;
}

TEST(PoCatalog, AByteOrderMarkIsAccepted) {
    TestUtil::TempDir dir;
    const fs::path file =
        dir.write("bom.po", "\xEF\xBB\xBFmsgctxt \"A|B|\"\nmsgid \"a\"\nmsgstr \"b\"\n");
    const PoCatalog catalog = readPoFile(file);
    ASSERT_EQ(catalog.entries.size(), 1u);
    EXPECT_EQ(catalog.entries[0].context, "A|B|");
    EXPECT_EQ(catalog.entries[0].line, 1);
}

TEST(PoCatalog, AnErrorAfterAByteOrderMarkKeepsItsLine) {
    TestUtil::TempDir dir;
    const fs::path file = dir.write(
        "bom.po", "\xEF\xBB\xBFmsgid \"a\"\nmsgstr \"b\"\n\nmsgid \"c\"\nmsgstr\nmsgid \"d\"\n");
    EXPECT_EQ(errorOf(file), file.string() + ":6: syntax error");
}

TEST(PoCatalog, AFifoIsRefusedAtOnceWithItsKind) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "pipe.po";
    ASSERT_EQ(::mkfifo(file.c_str(), 0644), 0);
    EXPECT_EQ(errorOf(file), file.string() + ": it is a FIFO (named pipe), not a regular file");
}

TEST(PoCatalog, ALinkToADeviceIsRefusedWithItsKind) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "zero.po";
    fs::create_symlink("/dev/zero", file);
    EXPECT_EQ(errorOf(file), file.string() + ": it is a character device, not a regular file");
}

TEST(PoCatalog, AMissingFileIsRefused) {
    TestUtil::TempDir dir;
    EXPECT_EQ(errorOf(dir.path() / "none.po"), (dir.path() / "none.po").string() +
                                                   ": cannot open the file: No such file or "
                                                   "directory");
}

TEST(PoCatalog, ACatalogInAnotherCharsetIsRefused) {
    TestUtil::TempDir dir;
    const fs::path file =
        dir.write("latin1.po", "msgid \"\"\nmsgstr \"Content-Type: text/plain; "
                               "charset=ISO-8859-1\\n\"\n\nmsgid \"a\"\nmsgstr \"b\"\n");
    EXPECT_NE(errorOf(file).find("is not in UTF-8"), std::string::npos) << errorOf(file);
}

TEST(PoCatalog, WritingReplacesAnExistingFileWhole) {
    TestUtil::TempDir dir;
    const fs::path file = dir.write("DE.po", std::string(100000, 'x'));
    writePoFile(sampleCatalog(), file);
    EXPECT_EQ(readPoFile(file).entries.size(), 3u);
    EXPECT_EQ(TestUtil::readFile(file).find("xxx"), std::string::npos);
}

TEST(PoCatalog, WritingIntoAMissingFolderFailsNamingTheFile) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "no folder" / "DE.po";
    try {
        writePoFile(sampleCatalog(), file);
        FAIL() << "written";
    } catch (const InputError& e) {
        EXPECT_NE(std::string(e.what()).find(file.string()), std::string::npos) << e.what();
    }
}
