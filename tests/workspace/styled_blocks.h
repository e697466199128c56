#pragma once

#include "model/block_layout.h"
#include "model/block_location.h"
#include "model/block_style.h"
#include "model/definition_document.h"
#include "model/field.h"

#include <boost/filesystem/path.hpp>
#include <boost/make_shared.hpp>

#include <map>
#include <string>
#include <vector>

namespace TestUtil {

/// Gives the blocks of the workspace site's docA (file `docA`) what the location and translation
/// dialogs offer: TB the styles S1 and FOLLOW and the fields TITLE and DOCTYPE, PL the style PS
/// and the field ITEM; gives every location without a dialog text "Location " and its ID; adds
/// `locations` and `translations` and saves the document.
inline void giveBlocksStylesAndFields(const boost::filesystem::path& docA,
                                      const std::vector<QorBorder::BlockLocation>& locations = {},
                                      const std::map<std::string, std::string>& translations = {}) {
    const auto document = QorBorder::DefinitionDocument::load(docA);
    const auto give = [&](const std::string& blockId, const std::vector<std::string>& styles,
                          const std::vector<std::string>& fields) {
        const auto block = document->getBlockLayout(blockId);
        for (const std::string& id : styles) {
            auto style = boost::make_shared<QorBorder::BlockStyle>();
            style->id = id;
            block->addStyle(style);
        }
        for (const std::string& id : fields) {
            auto field = boost::make_shared<QorBorder::Field>();
            field->id = id;
            block->addField(field);
        }
    };
    give("TB", {"S1", "FOLLOW"}, {"TITLE", "DOCTYPE"});
    give("PL", {"PS"}, {"ITEM"});
    for (const char* blockId : {"TB", "PL"}) {
        for (int i = 0; const auto stored = document->getBlockLocation(blockId, i); ++i) {
            if (stored->dialogText.empty()) {
                stored->dialogText = "Location " + stored->id;
            }
        }
    }
    for (const QorBorder::BlockLocation& location : locations) {
        document->addBlockLocation(boost::make_shared<QorBorder::BlockLocation>(location));
    }
    if (!translations.empty()) {
        std::map<std::string, std::string> all;
        document->fieldTranslations(all);
        for (const auto& entry : translations) {
            all[entry.first] = entry.second;
        }
        document->setFieldTranslations(all);
    }
    document->save();
}

} // namespace TestUtil
