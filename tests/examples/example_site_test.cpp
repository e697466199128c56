// Checks the example site in examples/: that its settings lead to the site and both
// configurations, that every document loads, validates and is stored in canonical form, that every
// template part it names exists and matches it, and that its contents are consistent with each
// other and with the sheet sizes and zone counts of ISO 5457 and ASME Y14.1.
#include "model/def_document_manager.h"
#include "model/definition_document.h"

#include "base/wildcard_filter.h"
#include "kiv/configuration_manager.h"
#include "kivug/search_file_list.h"
#include "testutil/temp_dir.h"

#include <nxsim/part_file.h>

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

using namespace QorBorder;
namespace fs = boost::filesystem;

namespace {

const fs::path kExamples = fs::path(QORFMT_EXAMPLES_DIR);
const char* const kFrameTemplates = "format_defs/frame_templates";
const char* const kBlockTemplates = "format_defs/block_templates";

// The stand-in's part units (1 mm, 2 inch) for a layout's FrameUnitsType.
int partUnits(int frameUnits) {
    return frameUnits == Millimeters ? 1 : 2;
}

bool near(double a, double b) {
    return std::fabs(a - b) < 1e-9;
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::string part;
    std::istringstream in(text);
    while (std::getline(in, part, separator)) {
        parts.push_back(part);
    }
    if (!text.empty() && text.back() == separator) {
        parts.emplace_back();
    }
    return parts;
}

bool contains(const std::vector<std::string>& list, const std::string& item) {
    return std::find(list.begin(), list.end(), item) != list.end();
}

// The example site as the configurator sees it: QORFMT_SITE names it and nothing else is set, so
// the site's own settings choose the configurations.
class ExampleSite : public ::testing::Test {
protected:
    void SetUp() override {
        m_environment.set("QORFMT_SITE", site().string());
        m_environment.set("QORFMT_CONFIGURATION", nullptr);
        m_environment.set("QORFMT_SEARCH_PATH", nullptr);
    }

    static fs::path site() { return fs::canonical(kExamples / "site"); }

    static std::vector<fs::path> documentFiles() {
        return KivUg::NxSearchFileList("format_defs").filePaths(Base::WildcardFilter("*.fordef"));
    }

    // Every document of the site, loaded into one manager so that lookups span all of them.
    std::vector<boost::shared_ptr<DefinitionDocument>> loadAll() {
        std::vector<boost::shared_ptr<DefinitionDocument>> documents;
        for (const fs::path& file : documentFiles()) {
            documents.push_back(m_manager.getDocument(file));
        }
        return documents;
    }

    std::vector<boost::shared_ptr<const BorderLayout>> allBorders() {
        std::vector<boost::shared_ptr<const BorderLayout>> borders;
        for (const auto& document : loadAll()) {
            for (const auto& border : document->borderLayoutTypes(AllUnits)) {
                borders.push_back(border);
            }
        }
        return borders;
    }

    std::vector<boost::shared_ptr<const BlockLayout>> allBlocks() {
        loadAll();
        return m_manager.blockLayouts(AllUnits);
    }

    TestUtil::ScopedEnvironment m_environment;
    DefDocumentManagerImpl m_manager;
};

} // namespace

TEST_F(ExampleSite, SearchRootsAreTheSiteThenTheCommonThenThePlantConfiguration) {
    const fs::path configurations = fs::canonical(kExamples / "configurations");
    const std::vector<fs::path> expected = {site(), configurations / "common" / "nx",
                                            configurations / "plant_a" / "nx"};
    EXPECT_EQ(KivUg::searchRoots(), expected);

    Kiv::ConfigurationManager configurationManager;
    const auto current = configurationManager.currentConfiguration();
    ASSERT_TRUE(current);
    EXPECT_EQ(current->name(), "plant_a");
    EXPECT_EQ(fs::canonical(current->commonConfigPath()), configurations / "common");
}

// The file select dialog files a document under every base folder whose path occurs in the
// document's folder path; configurations inside the site would show under "Installation" too.
TEST_F(ExampleSite, ConfigurationFoldersLieOutsideTheSiteFolder) {
    const std::string sitePath = site().string();
    const auto roots = KivUg::searchRoots();
    ASSERT_GE(roots.size(), 3u);
    for (std::size_t i = 1; i < roots.size(); ++i) {
        EXPECT_EQ(roots[i].string().find(sitePath), std::string::npos) << roots[i];
    }
}

TEST_F(ExampleSite, EveryRootHoldsAtLeastOneDocument) {
    const auto files = documentFiles();
    for (const fs::path& root : KivUg::searchRoots()) {
        const bool found = std::any_of(files.begin(), files.end(), [&](const fs::path& file) {
            return file.parent_path() == root / "format_defs";
        });
        EXPECT_TRUE(found) << "no document in " << root / "format_defs";
    }
}

TEST_F(ExampleSite, EveryDocumentLoadsAndHoldsBordersOrBlocks) {
    const auto files = documentFiles();
    ASSERT_FALSE(files.empty());
    for (const fs::path& file : files) {
        boost::shared_ptr<DefinitionDocument> document;
        ASSERT_NO_THROW(document = DefinitionDocument::load(file)) << file;
        EXPECT_FALSE(document->modified) << file;
        EXPECT_TRUE(!document->borderLayoutTypes(AllUnits).empty() ||
                    !document->blockLayouts(AllUnits).empty())
            << file;
    }
}

TEST_F(ExampleSite, EveryDocumentValidatesAgainstTheSchema) {
    for (const fs::path& file : documentFiles()) {
        const std::string command = std::string(QORFMT_XMLLINT) + " --noout --schema '" +
                                    QORFMT_FORDEF_SCHEMA + "' '" + file.string() + "' 2>&1";
        FILE* pipe = ::popen(command.c_str(), "r");
        ASSERT_NE(pipe, nullptr);
        std::string output;
        char buffer[512];
        while (std::fgets(buffer, sizeof buffer, pipe)) {
            output += buffer;
        }
        EXPECT_EQ(::pclose(pipe), 0) << output;
    }
}

// Documents are committed as the model writes them, so that saving one unchanged in the
// configurator shows no difference.
TEST_F(ExampleSite, SavingAnUnchangedDocumentGivesTheSameBytes) {
    TestUtil::TempDir dir;
    for (const fs::path& file : documentFiles()) {
        const auto document = DefinitionDocument::load(file);
        const fs::path copy = dir.path() / file.filename();
        document->save(copy);
        const std::string original = TestUtil::readFile(file);
        ASSERT_FALSE(original.empty()) << file;
        EXPECT_EQ(TestUtil::readFile(copy), original) << file;
    }
}

TEST_F(ExampleSite, EveryFrameTemplateIsFoundAndHasOneDrawingOfItsDrawingSize) {
    int sizes = 0;
    for (const auto& border : allBorders()) {
        for (const DrawingSize& size : border->drawingSizes()) {
            ++sizes;
            const std::string where = border->id + " " + size.name;
            const fs::path file = KivUg::findFile(size.templateFile, kFrameTemplates, false);
            ASSERT_FALSE(file.empty()) << where << ": " << size.templateFile << " not found";
            nxsim::SimPart part;
            ASSERT_NO_THROW(part = nxsim::readPartFile(file)) << file;
            ASSERT_EQ(part.drawings.size(), 1u) << file;
            const nxsim::SimDrawing& drawing = part.drawings[0];
            // Landscape sheets are NX's standard sizes; a portrait sheet is a custom one.
            const int standardState = border->units == Millimeters ? 0 : 1;
            EXPECT_EQ(drawing.sizeState, size.height > size.length ? 2 : standardState) << where;
            EXPECT_EQ(drawing.height, size.height) << where;
            EXPECT_EQ(drawing.length, size.length) << where;
            EXPECT_EQ(drawing.units, partUnits(border->units)) << where;
            EXPECT_EQ(part.units, partUnits(border->units)) << where;
        }
    }
    EXPECT_GT(sizes, 0);
}

TEST_F(ExampleSite, EveryFramePartHasPointsAtTheBorderCornersAndTheFrameLength) {
    for (const auto& border : allBorders()) {
        for (const DrawingSize& size : border->drawingSizes()) {
            const std::string where = border->id + " " + size.name;
            const nxsim::SimPart part =
                nxsim::readPartFile(KivUg::findFile(size.templateFile, kFrameTemplates, true));
            const double left = border->bottomLeft.x;
            const double bottom = border->bottomLeft.y;
            const double right = size.length - border->topRight.x;
            const double top = size.height - border->topRight.y;
            auto hasPoint = [&](double x, double y) {
                return std::any_of(part.objects.begin(), part.objects.end(),
                                   [&](const nxsim::SimObject& o) {
                                       return o.type == nxsim::SimObject::Point &&
                                              near(o.start[0], x) && near(o.start[1], y);
                                   });
            };
            EXPECT_TRUE(hasPoint(left, bottom)) << where << ": no point at the bottom left";
            EXPECT_TRUE(hasPoint(right, top)) << where << ": no point at the top right";
            // The frame's bottom edge is a line of the template from corner to corner.
            const bool bottomEdge = std::any_of(
                part.objects.begin(), part.objects.end(), [&](const nxsim::SimObject& o) {
                    return o.type == nxsim::SimObject::Line && near(o.start[0], left) &&
                           near(o.start[1], bottom) && near(o.end[0], right) &&
                           near(o.end[1], bottom);
                });
            EXPECT_TRUE(bottomEdge) << where << ": no frame line along the bottom";
            EXPECT_NEAR(size.frameLength, right - left, 1e-9) << where;
        }
    }
}

// Sheet sizes and zone counts as the standards give them: (height, length) of the landscape
// sheet and the number of zones along its length and its height. A portrait sheet swaps both.
TEST_F(ExampleSite, SheetSizesAndZoneCountsFollowIso5457AndAsmeY141) {
    using Key = std::tuple<int, double, double>;
    using Zones = std::pair<int, int>;
    const std::map<Key, Zones> standard = {
        {Key(Millimeters, 841, 1189), {24, 16}}, {Key(Millimeters, 594, 841), {16, 12}},
        {Key(Millimeters, 420, 594), {12, 8}},   {Key(Millimeters, 297, 420), {8, 6}},
        {Key(Millimeters, 210, 297), {6, 4}},    {Key(Inches, 8.5, 11), {2, 2}},
        {Key(Inches, 11, 17), {4, 2}},           {Key(Inches, 17, 22), {4, 4}},
        {Key(Inches, 22, 34), {8, 4}},           {Key(Inches, 34, 44), {8, 8}},
    };
    for (const auto& border : allBorders()) {
        for (const DrawingSize& size : border->drawingSizes()) {
            const std::string where = border->id + " " + size.name;
            const bool portrait = size.height > size.length;
            const Key key(border->units, portrait ? size.length : size.height,
                          portrait ? size.height : size.length);
            const auto entry = standard.find(key);
            ASSERT_NE(entry, standard.end()) << where << ": not a standard sheet size";
            const Zones zones =
                portrait ? Zones(entry->second.second, entry->second.first) : entry->second;
            EXPECT_EQ(size.horizontalZones, zones.first) << where;
            EXPECT_EQ(size.verticalZones, zones.second) << where;
        }
    }
}

TEST_F(ExampleSite, IsoFramesHaveTheFilingMarginOnTheLeftAndTenMillimetresElsewhere) {
    int isoBorders = 0;
    for (const auto& border : allBorders()) {
        if (border->units != Millimeters) {
            continue;
        }
        ++isoBorders;
        EXPECT_EQ(border->bottomLeft.x, 20) << border->id;
        EXPECT_EQ(border->bottomLeft.y, 10) << border->id;
        EXPECT_EQ(border->topRight.x, 10) << border->id;
        EXPECT_EQ(border->topRight.y, 10) << border->id;
    }
    EXPECT_GT(isoBorders, 0);
}

TEST_F(ExampleSite, EveryBlockTemplateIsFoundAndHasOneCustomDrawing) {
    int styles = 0;
    for (const auto& block : allBlocks()) {
        for (const auto& style : block->styles()) {
            ++styles;
            const std::string where = block->id + " " + style->id;
            const fs::path file = KivUg::findFile(style->templateFile, kBlockTemplates, false);
            ASSERT_FALSE(file.empty()) << where << ": " << style->templateFile << " not found";
            nxsim::SimPart part;
            ASSERT_NO_THROW(part = nxsim::readPartFile(file)) << file;
            ASSERT_EQ(part.drawings.size(), 1u) << file;
            EXPECT_EQ(part.drawings[0].sizeState, 2) << file << ": blocks have a custom size";
            EXPECT_EQ(part.units, partUnits(block->units)) << where;
            EXPECT_FALSE(part.objects.empty()) << file << ": no geometry";
        }
    }
    EXPECT_GT(styles, 0);
}

TEST_F(ExampleSite, EveryTranslationKeyHasFourPartsNamingAChoiceOfABlockField) {
    std::set<std::string> languages;
    for (const auto& border : allBorders()) {
        languages.insert(border->secondLanguages.begin(), border->secondLanguages.end());
    }
    int translations = 0;
    for (const auto& document : loadAll()) {
        for (const auto& entry : document->translations()) {
            ++translations;
            const std::vector<std::string> parts = split(entry.first, '_');
            ASSERT_EQ(parts.size(), 4u) << entry.first;
            for (const std::string& part : parts) {
                EXPECT_FALSE(part.empty()) << entry.first;
            }
            EXPECT_EQ(languages.count(parts[0]), 1u)
                << entry.first << ": no border offers that language";
            const auto block = m_manager.getBlockLayout(parts[1]);
            ASSERT_TRUE(block) << entry.first << ": no such block";
            // The translation dialog offers the block's own fields, not those of its rows.
            boost::shared_ptr<const Field> field;
            for (const auto& candidate : block->fields()) {
                if (candidate->id == parts[2]) {
                    field = candidate;
                }
            }
            ASSERT_TRUE(field) << entry.first << ": no such field of the block";
            const auto choices = field->textChoices();
            EXPECT_TRUE(std::any_of(choices.begin(), choices.end(),
                                    [&](const Choice& c) { return c.lookupKey == parts[3]; }))
                << entry.first << ": no choice with that lookup key";
            EXPECT_FALSE(entry.second.empty()) << entry.first;
        }
    }
    EXPECT_GT(translations, 0);
}

TEST_F(ExampleSite, RequiredBlocksAndLocationsNameExistingBlocksAndStyles) {
    for (const auto& border : allBorders()) {
        for (const auto* list : {&border->coreRequiredBlocks, &border->sheet1RequiredBlocks}) {
            for (const std::string& id : *list) {
                EXPECT_TRUE(m_manager.getBlockLayout(id)) << border->id << " requires " << id;
            }
        }
    }
    int locations = 0;
    for (const auto& document : loadAll()) {
        for (const auto& location : document->allBlockLocations()) {
            ++locations;
            const std::string where = location->blockId + " " + location->id;
            EXPECT_FALSE(location->dialogText.empty()) << where;
            const auto block = m_manager.getBlockLayout(location->blockId);
            ASSERT_TRUE(block) << where << ": no such block";
            if (!location->styleId.empty()) {
                const auto styles = block->styles();
                EXPECT_TRUE(std::any_of(styles.begin(), styles.end(), [&](const auto& style) {
                    return style->id == location->styleId;
                })) << where;
            }
            if (!location->associatedBlockId.empty()) {
                EXPECT_NE(location->associatedBlockId, location->blockId) << where;
                EXPECT_TRUE(m_manager.getBlockLayout(location->associatedBlockId)) << where;
            }
        }
    }
    EXPECT_GT(locations, 0);
}

TEST_F(ExampleSite, IdsContainNoUnderscoreAndReferencesNameExistingFields) {
    for (const auto& block : allBlocks()) {
        EXPECT_EQ(block->id.find('_'), std::string::npos) << block->id;
        const std::vector<std::string> fieldIds = block->fieldIds();
        for (const std::string& id : fieldIds) {
            EXPECT_EQ(id.find('_'), std::string::npos) << block->id << " " << id;
        }
        for (const auto& field : block->fields()) {
            if (!field->secondLanguageFieldId.empty()) {
                EXPECT_TRUE(contains(fieldIds, field->secondLanguageFieldId)) << field->id;
            }
            for (const Choice& choice : field->textChoices()) {
                EXPECT_EQ(choice.lookupKey.find('_'), std::string::npos) << choice.lookupKey;
            }
        }
        const auto styles = block->styles();
        EXPECT_TRUE(
            std::any_of(styles.begin(), styles.end(),
                        [&](const auto& style) { return style->id == block->defaultStyleId; }))
            << block->id << ": the default style is not one of its styles";
        for (const auto& style : styles) {
            for (const auto& placement : style->placements()) {
                EXPECT_TRUE(contains(fieldIds, placement.first))
                    << block->id << " " << style->id << " places " << placement.first;
            }
            for (const auto& column : style->tableColumns()) {
                EXPECT_TRUE(contains(block->tableFieldIds(column.first.first), column.first.second))
                    << block->id << " " << style->id << " " << column.first.first << "/"
                    << column.first.second;
            }
        }
        const auto rowTypes = block->getTable().rowTypes();
        for (const auto& rowType : rowTypes) {
            EXPECT_EQ(rowType->id.find('_'), std::string::npos) << rowType->id;
            const std::vector<std::string> rowFields = block->tableFieldIds(rowType->id);
            for (const std::string* role :
                 {&rowType->zoneFieldId, &rowType->typeManagerFieldId, &rowType->keyFieldId}) {
                if (!role->empty()) {
                    EXPECT_TRUE(contains(rowFields, *role)) << rowType->id << " " << *role;
                }
            }
            for (const std::string& id : rowType->dialogListFields()) {
                EXPECT_TRUE(contains(rowFields, id)) << rowType->id << " " << id;
            }
            if (!rowType->typeManagerFieldId.empty()) {
                const auto manager = rowType->getField(rowType->typeManagerFieldId);
                ASSERT_TRUE(manager);
                EXPECT_EQ(manager->type, 1) << "a type manager has text choices";
                for (const auto& settings : rowType->typeManagerSettings()) {
                    EXPECT_LT(settings.first, static_cast<int>(manager->textChoices().size()));
                }
            }
        }
        // The symbol type dialog offers the fields of the first row type.
        const auto symbols = block->symbolTypes();
        if (!symbols.empty()) {
            ASSERT_FALSE(rowTypes.empty()) << block->id << ": symbol types need a row type";
            const std::vector<std::string> offered = block->tableFieldIds(rowTypes[0]->id);
            for (const auto& symbol : symbols) {
                for (const auto* line : {&symbol->line1FieldIds, &symbol->line2FieldIds}) {
                    for (const std::string& id : *line) {
                        EXPECT_TRUE(contains(offered, id)) << symbol->dialogText << " " << id;
                    }
                }
            }
        }
    }
}

// The field dialog moves a control type that does not fit the field type back to 0 whenever it
// opens, and offers table fields the types 0 to 2 only; the examples keep to what it keeps.
TEST_F(ExampleSite, FieldTypesAndControlTypesAreCombinationsTheFieldDialogKeeps) {
    const std::map<int, std::set<int>> kept = {
        {0, {0, 1, 2, 3, 8, 9}}, {1, {0, 4, 5, 6}}, {2, {0, 7}}, {3, {0}},
        {4, {0, 1, 2, 3}},       {5, {0, 1, 2, 3}}};
    auto check = [&](const std::string& where, const Field& field, bool inTable) {
        ASSERT_EQ(kept.count(field.type), 1u) << where << ": type " << field.type;
        EXPECT_EQ(kept.at(field.type).count(field.controlType), 1u)
            << where << ": control type " << field.controlType << " with type " << field.type;
        EXPECT_EQ(field.isTableField, inTable) << where;
        if (inTable) {
            EXPECT_LE(field.type, 2) << where;
        }
        const int choices = static_cast<int>(field.textChoices().size());
        if (field.type == 1) {
            EXPECT_GT(choices, 0) << where;
            EXPECT_GE(field.defaultChoice, 0) << where;
            EXPECT_LT(field.defaultChoice, choices) << where;
        } else {
            EXPECT_EQ(choices, 0) << where;
        }
        if (field.type == 4 || field.type == 5) {
            EXPECT_FALSE(field.attrTitle.empty()) << where;
        }
    };
    int fields = 0;
    for (const auto& block : allBlocks()) {
        for (const auto& field : block->fields()) {
            ++fields;
            check(block->id + " " + field->id, *field, false);
        }
        for (const auto& rowType : block->getTable().rowTypes()) {
            for (const auto& field : rowType->fields()) {
                ++fields;
                check(block->id + " " + rowType->id + " " + field->id, *field, true);
            }
        }
    }
    EXPECT_GT(fields, 0);
}
