#include "fordef_generator.h"

#include <boost/make_shared.hpp>

#include <cstdio>

using namespace QorBorder;

namespace Bench {

namespace {

std::string numbered(const std::string& stem, int number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%05d", number);
    return stem + digits;
}

} // namespace

boost::shared_ptr<DefinitionDocument> generateDocument(const DocumentShape& shape,
                                                       const std::string& prefix) {
    auto document = boost::make_shared<DefinitionDocument>("");
    for (int b = 0; b < shape.borderLayouts; ++b) {
        auto border = boost::make_shared<BorderLayout>();
        border->id = numbered(prefix + "BORDER" + shape.idSeparator, b);
        border->description = "Drawing frame " + std::to_string(b) + " for plant documents";
        border->category = "Standard frames";
        border->coreRequiredBlocks = {numbered(prefix + "BLOCK" + shape.idSeparator, b % 97),
                                      shape.revisionBlock};
        border->sheet1RequiredBlocks = {shape.partsListBlock};
        border->secondLanguages = {"German", "French"};
        border->units = 1 + b % 2;
        border->layer = 200 + b % 50;
        border->bottomLeft = {10.0, 10.0, 0.0};
        border->topRight = {10.0, 5.0 + b * 0.25, 0.0};
        border->horizontalZoneType = b % 3;
        border->verticalZoneType = (b + 1) % 3;
        border->zoneStart = b % 4;
        for (int s = 0; s < shape.sizesPerBorder; ++s) {
            DrawingSize size;
            size.templateFile = "frame_a" + std::to_string(s) + ".prt";
            size.name = "A" + std::to_string(s);
            size.description = "ISO A" + std::to_string(s) + " landscape";
            size.label = "Size A" + std::to_string(s);
            size.height = 841.0 / (1 << (s / 2)) + 0.125 * s;
            size.length = 1189.0 / (1 << (s / 2)) + 0.5 * s;
            size.frameLength = size.length - 30.0;
            size.horizontalZones = 16 - s;
            size.verticalZones = 12 - s;
            border->addDrawingSize(size);
        }
        document->addBorderLayout(border);
    }

    for (int k = 0; k < shape.blockLayouts; ++k) {
        auto block = boost::make_shared<BlockLayout>();
        block->id = numbered(prefix + "BLOCK" + shape.idSeparator, k);
        block->description = "Title block variant " + std::to_string(k);
        block->category = k % 2 == 0 ? "Title blocks" : "Revision tables";
        block->units = 1 + k % 2;
        block->layer = 210;
        block->editMethod = k % 2;
        block->dialogFileName = "title_block.dlg";
        block->delegateLibrary = "libtitleblocks.so";
        block->setStyleDelegate = "setTitleStyle";
        block->editFieldsDelegate = "editTitleFields";
        block->repeating = k % 3 == 0;
        block->repeatSpacing = "8.5";
        block->columnForRowNumber = 1;
        block->sbfFileName = "title.sbf";
        block->angle = 90.0 * (k % 4);
        block->maxHeightMargin = 2.5;
        block->defaultStyleId = "STYLE" + shape.idSeparator + "0";
        for (int f = 0; f < shape.fieldsPerBlock; ++f) {
            auto field = boost::make_shared<Field>();
            field->id = numbered("FIELD" + shape.idSeparator, f);
            field->type = f % 3;
            field->controlType = f % 3 == 1 ? 4 : 1;
            field->prefix = f % 5 == 0 ? "No. " : "";
            field->broadcastTitle = "Attribute " + std::to_string(f);
            field->defaultString = f % 7 == 0 ? "First line\nSecond line" : "";
            field->defaultChoice = f % 3 == 1 ? 0 : -1;
            field->attrTitle = "DB_PART_" + std::to_string(f);
            if (f % 3 == 1) {
                std::vector<Choice> choices(3);
                for (int c = 0; c < 3; ++c) {
                    choices[c].lookupKey = "K" + std::to_string(c);
                    choices[c].shortValue = "Choice " + std::to_string(c);
                    choices[c].fullValue = "The full text of choice " + std::to_string(c);
                }
                field->setTextChoices(choices);
            }
            block->addField(field);
        }
        for (int s = 0; s < shape.stylesPerBlock; ++s) {
            auto style = boost::make_shared<BlockStyle>();
            style->id = "STYLE" + shape.idSeparator + std::to_string(s);
            style->dialogText = "Style " + std::to_string(s);
            style->templateFile = "title_" + std::to_string(s) + ".prt";
            for (int f = 0; f < shape.fieldsPerBlock; f += 4) {
                style->setRow(numbered("FIELD" + shape.idSeparator, f), f / 4);
                style->setColumn(numbered("FIELD" + shape.idSeparator, f), f % 4);
            }
            block->addStyle(style);
        }
        for (int r = 0; r < shape.rowTypesPerBlock; ++r) {
            auto rowType = boost::make_shared<RowType>();
            rowType->id = "ROW" + shape.idSeparator + std::to_string(r);
            rowType->listSeparator = ", ";
            rowType->headerRow = 1;
            rowType->zoneFieldId = "ZONE";
            for (const char* id : {"ZONE", "REV", "DESCRIPTION", "DATE"}) {
                auto field = boost::make_shared<Field>(true);
                field->id = id;
                rowType->appendField(field);
            }
            rowType->setDialogListFields({"REV", "DESCRIPTION", "DATE"});
            block->getTable().addRowType(rowType);
        }
        document->addBlockLayout(block);
    }

    for (int l = 0; l < shape.blockLocations; ++l) {
        auto location = boost::make_shared<BlockLocation>();
        location->id = numbered("LOC" + shape.idSeparator, l);
        location->blockId =
            numbered(prefix + "BLOCK" + shape.idSeparator, l % std::max(1, shape.blockLayouts));
        location->dialogText = "Bottom right corner " + std::to_string(l);
        location->offsetX = "-10";
        location->offsetY = "10";
        location->attachCorner = l % 4;
        location->associatedCorner = (l + 2) % 4;
        document->addBlockLocation(location);
    }

    DefinitionDocument::TranslationMap translations;
    for (int t = 0; t < shape.translations; ++t) {
        translations[translationKey(
            t % 2 == 0 ? "German" : "French",
            numbered(prefix + "BLOCK" + shape.idSeparator, t % std::max(1, shape.blockLayouts)),
            numbered("FIELD" + shape.idSeparator, t % std::max(1, shape.fieldsPerBlock)),
            "K" + std::to_string(t))] = "Translated text " + std::to_string(t);
    }
    document->setFieldTranslations(translations);
    document->modified = false;
    return document;
}

} // namespace Bench
