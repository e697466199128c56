#include "sample_documents.h"

#include <boost/make_shared.hpp>

#include <cstdint>
#include <limits>

using namespace QorBorder;

namespace ModelTest {

std::string awkwardText(int variant) {
    switch (variant % 8) {
    case 0:
        return "  leading and trailing blanks  ";
    case 1:
        return "two\nlines\n";
    case 2:
        return "<markup> & \"quotes\" 'apostrophes' &amp; ]]>";
    case 3:
        return std::string("tab\there, CR\r\nand LF, \xc3\xa4\xc3\xb6\xc3\xbc \xe2\x82\xac");
    case 4: {
        static const char bytes[] = "nul\0byte and \x01 control";
        return std::string(bytes, sizeof bytes - 1);
    }
    case 5:
        return "latin-1 \xe4 is not UTF-8";
    case 6:
        return "";
    default:
        return " ";
    }
}

namespace {

boost::shared_ptr<Field> makeField(const std::string& id, bool table, int seed) {
    auto field = boost::make_shared<Field>(table);
    field->id = id;
    field->type = seed % 6;
    field->secondLanguageFieldId = table ? "" : "partner of " + id;
    field->collapseNoValue = seed % 2 == 0;
    field->prefix = awkwardText(seed);
    field->suffix = awkwardText(seed + 1);
    field->broadcastType = seed + 2;
    field->broadcastValueType = -seed;
    field->broadcastTitle = awkwardText(seed + 2);
    field->syncField = seed % 3 == 0;
    field->controlType = seed % 10;
    field->defaultString = "line 1\nline 2\n\n  indented line 4 ";
    field->defaultToCurrentDate = seed % 2 == 1;
    field->defaultChoice = seed == 0 ? 7 : -1; // an index outside the choices is kept
    field->attrTitle = awkwardText(seed + 3);
    std::vector<Choice> choices;
    for (int i = 0; i < seed % 4 + 1; ++i) {
        Choice choice;
        choice.lookupKey = "key " + std::to_string(3 - i);
        choice.shortValue = awkwardText(seed + i);
        choice.fullValue = "full\n" + awkwardText(seed + i + 4);
        choices.push_back(choice);
    }
    choices.push_back(Choice()); // all three texts empty
    field->setTextChoices(choices);
    return field;
}

} // namespace

boost::shared_ptr<DefinitionDocument> makeFullDocument(const std::string& filename) {
    auto document = boost::make_shared<DefinitionDocument>(filename);

    for (int b = 0; b < 3; ++b) {
        auto border = boost::make_shared<BorderLayout>();
        border->id = b == 1 ? "" : "BORDER " + std::to_string(9 - b);
        border->description = awkwardText(b);
        border->category = awkwardText(b + 3);
        border->coreRequiredBlocks = {"Z", "A", "A", awkwardText(b + 4)};
        border->sheet1RequiredBlocks = {"unknown block", ""};
        border->secondLanguages = b == 0 ? std::vector<std::string>{}
                                         : std::vector<std::string>{"German", " ", "Fran\xc3\xa7"};
        border->units = b == 2 ? 0 : Millimeters;
        border->layer = std::numeric_limits<std::int32_t>::min();
        border->bottomLeft = {0.1, -0.0, 1e-310};
        border->topRight = {std::numeric_limits<double>::max(),
                            std::numeric_limits<double>::denorm_min(),
                            std::numeric_limits<double>::infinity()};
        border->horizontalZoneType = 3;
        border->verticalZoneType = std::numeric_limits<std::int32_t>::max();
        border->zoneStart = -1;
        for (int s = 0; s < 3 - b; ++s) {
            DrawingSize size;
            size.templateFile = "a" + std::to_string(s) + ".prt";
            size.name = awkwardText(s + b);
            size.description = "A" + std::to_string(s);
            size.label = awkwardText(s + 5);
            size.height = 297.0 / 3.0;
            size.length = -std::numeric_limits<double>::max(); // the reader refuses -INF here
            size.frameLength = 1.0 / 3.0 + s;
            size.horizontalZones = s * 500; // up to the most zones the reader takes
            size.verticalZones = s;
            border->addDrawingSize(size);
        }
        document->addBorderLayout(border);
    }

    for (int k = 0; k < 2; ++k) {
        auto block = boost::make_shared<BlockLayout>();
        block->id = "BLOCK " + std::to_string(k);
        block->description = awkwardText(k + 1);
        block->category = awkwardText(k + 2);
        block->units = 7;
        block->layer = 256;
        block->editMethod = k;
        block->dialogFileName = "dialog.dlg";
        block->delegateLibrary = awkwardText(k + 4);
        block->setStyleDelegate = "setStyle";
        block->editFieldsDelegate = "editFields";
        block->requiredBlockOnly = true;
        block->repeating = k == 0;
        block->repeatSpacing = " 12.5 mm ";
        block->columnForRowNumber = -3;
        block->sbfBase = 2;
        block->sbfFileName = awkwardText(k + 5);
        block->flip = true;
        block->angle = -90.000000000000014;
        block->borderTransition = 4;
        block->allowOverride = true;
        block->maxHeightMargin = 1e300;
        block->defaultStyleId = "no such style";

        block->addField(makeField("F2", false, k));
        block->addField(makeField("F1", false, k + 1));
        block->addField(makeField(awkwardText(k + 3), false, k + 2));

        for (int s = 0; s < 2; ++s) {
            auto style = boost::make_shared<BlockStyle>();
            style->id = "STYLE " + std::to_string(1 - s);
            style->dialogText = awkwardText(s + k);
            style->templateFile = "block" + std::to_string(s) + ".prt";
            style->templateType = s;
            style->setRow("F2", 3);
            style->setColumn("F1", -4);
            style->setFieldInHeader(awkwardText(k + 3), true);
            style->setFieldIndex("not a field", 99);
            style->setTableColumn("ROW", "T1", 5);
            style->setTableColumn("ROW", awkwardText(4), -5);
            style->setTableColumn("", "", 0);
            block->addStyle(style);
        }
        block->addStyle(boost::make_shared<BlockStyle>()); // nothing set

        Table& table = block->getTable();
        table.rowsCreated = k == 1;
        for (int r = 0; r < 2; ++r) {
            auto rowType = boost::make_shared<RowType>();
            rowType->id = r == 0 ? "ROW" : awkwardText(r + k);
            rowType->zoneFieldId = "T1";
            rowType->listSeparator = r == 0 ? ", " : "\n";
            rowType->headerRow = r - 1;
            rowType->showBottomBorder = r == 1;
            rowType->typeManagerFieldId = "T2";
            rowType->keyFieldId = "missing field";
            rowType->appendField(makeField("T2", true, r));
            rowType->appendField(makeField("T1", true, r + 3));
            rowType->setDialogListFields({"T2", "T1", "T2"});
            rowType->setValidSymbolIndices(2, "0,1, 3");
            rowType->setDisabledFieldIds(2, "T1 T2");
            rowType->setValidSymbolIndices(-1, awkwardText(r + 4));
            rowType->setDisabledFieldIds(0, "");
            table.addRowType(rowType);
        }

        for (int y = 0; y < 2; ++y) {
            auto symbol = boost::make_shared<SymbolType>();
            symbol->dialogText = awkwardText(y + k + 1);
            symbol->type = y;
            symbol->color = 186;
            symbol->layer = -7;
            symbol->line1FieldIds = {"T2", "T1"};
            symbol->line2FieldIds =
                y == 0 ? std::vector<std::string>{} : std::vector<std::string>{"T1"};
            symbol->fontName = "blockfont";
            symbol->symbolSize = 2.5;
            symbol->textSize = 0.1 + 0.2;
            symbol->textAspect = 1.0 / 7.0;
            symbol->line1Scale = 5e-324;
            symbol->line2Scale = -1.7976931348623157e308;
            symbol->customSymbolName = awkwardText(y + 3);
            block->addSymbolType(symbol);
        }
        document->addBlockLayout(block);
    }
    document->addBlockLayout(boost::make_shared<BlockLayout>()); // all defaults

    for (int l = 0; l < 5; ++l) {
        auto location = boost::make_shared<BlockLocation>();
        location->id = "LOC " + std::to_string(4 - l);
        location->blockId = l % 2 == 0 ? "BLOCK 0" : "BLOCK 1";
        location->styleId = l == 3 ? "STYLE 1" : "";
        location->associatedBlockId = l == 4 ? "BLOCK 0" : "";
        location->dialogText = awkwardText(l);
        location->offsetX = "-12.5";
        location->offsetY = awkwardText(l + 2);
        location->attachCorner = l;
        location->associatedCorner = 3 - l;
        location->overflowDirection = l * 100;
        document->addBlockLocation(location);
    }

    DefinitionDocument::TranslationMap translations;
    translations["German_BLOCK 0_F1_key 3"] = "Zeichnung\nzwei Zeilen";
    translations["French_BLOCK 1_F2_"] = awkwardText(4);
    translations[awkwardText(5)] = awkwardText(3);
    translations[""] = "";
    document->setFieldTranslations(translations);
    document->modified = false;
    return document;
}

boost::shared_ptr<DefinitionDocument> makeSmallDocument(const std::string& filename) {
    auto document = boost::make_shared<DefinitionDocument>(filename);
    auto border = boost::make_shared<BorderLayout>();
    border->id = "A3 frame";
    border->description = "Frame for A3 sheets";
    DrawingSize size;
    size.name = "A3";
    size.description = "A3 landscape";
    size.templateFile = "a3.prt";
    size.height = 297;
    size.length = 420;
    border->addDrawingSize(size);
    document->addBorderLayout(border);

    auto block = boost::make_shared<BlockLayout>();
    block->id = "TITLE";
    block->description = "Title block";
    auto field = boost::make_shared<Field>();
    field->id = "DRAWN_BY";
    block->addField(field);
    auto style = boost::make_shared<BlockStyle>();
    style->id = "DEFAULT";
    style->templateFile = "title.prt";
    style->setRow("DRAWN_BY", 1);
    block->addStyle(style);
    block->defaultStyleId = "DEFAULT";
    document->addBlockLayout(block);

    auto location = boost::make_shared<BlockLocation>();
    location->id = "BOTTOM_RIGHT";
    location->blockId = "TITLE";
    location->dialogText = "Bottom right";
    document->addBlockLocation(location);

    document->setFieldTranslations({{"German_TITLE_DRAWN_BY_", "Gezeichnet"}});
    document->modified = false;
    return document;
}

boost::filesystem::path saveSmallDocument(const boost::filesystem::path& folder,
                                          const std::string& name) {
    const boost::filesystem::path file = folder / name;
    makeSmallDocument("")->save(file);
    return file;
}

} // namespace ModelTest
