#include "block/block_location_dialog.h"

#include "block/block_location_dialog_names.h"
#include "model/block_location.h"
#include "model/def_document_manager.h"
#include "ui/dialog_binder.h"
#include "ui/message_dialogs.h"
#include "ui/no_such_entry_error.h"
#include "ui/option_menu.h"
#include "ui/string_item.h"

#include <cassert>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace Names = QorBorderConf::BlockLocationDialogNames;

namespace QorBorderConf {

BlockLocationDialog::BlockLocationDialog(
    const boost::shared_ptr<QorBorder::BlockLocation>& location, bool editMode)
    : NXDialogBase(Names::kResourceFile, Names::kDialogName), m_location(location),
      m_editMode(editMode) {
    assert(m_location);
}

std::vector<std::string> BlockLocationDialog::blockIds() {
    std::vector<std::string> ids;
    for (const auto& layout : QorBorder::DefDocumentManager().blockLayouts(QorBorder::AllUnits)) {
        ids.push_back(layout->id);
    }
    return ids;
}

void BlockLocationDialog::initializeDialog() {
    KivNX::UI::DialogBinder bind(*this, *this);
    bind.onConstruct(&BlockLocationDialog::onConstruct);
    bind.onOkay(&BlockLocationDialog::onOk);

    m_dialogText = bind.control<KivNX::UI::StringItem>(Names::DIALOG_TEXT);
    m_id = bind.control<KivNX::UI::StringItem>(Names::ID);
    m_blockId = bind.control<KivNX::UI::OptionMenu>(Names::BLOCK_ID);
    bind.onActivate(*m_blockId, &BlockLocationDialog::onBlockIdActivated, OpensDialog::No);
    m_blockStyle = bind.control<KivNX::UI::OptionMenu>(Names::BLOCK_STYLE);
    m_attachCorner = bind.control<KivNX::UI::OptionMenu>(Names::ATTACH_CORNER);
    m_associateTo = bind.control<KivNX::UI::OptionMenu>(Names::ASSOCIATE_TO);
    m_associatedCorner = bind.control<KivNX::UI::OptionMenu>(Names::ASSOCIATED_CORNER);
    m_offsetX = bind.control<KivNX::UI::StringItem>(Names::OFFSET_X);
    m_offsetY = bind.control<KivNX::UI::StringItem>(Names::OFFSET_Y);
    m_overflowDirection = bind.control<KivNX::UI::OptionMenu>(Names::OVERFLOW_DIRECTION);
}

DialogState BlockLocationDialog::onConstruct(StylerEvent* event) {
    const QorBorder::BlockLocation& location = *m_location;
    m_dialogText->SetItemValue(location.dialogText);
    m_id->SetItemValue(location.id);
    // The values that cannot be refused come before the block's menus: a stored style or
    // associated block that the menus do not offer stops the rest of the fill (the user is told
    // by the dialog framework), and must not leave these showing defaults that OK would write.
    m_offsetX->SetItemValue(location.offsetX);
    m_offsetY->SetItemValue(location.offsetY);
    m_associatedCorner->SetItemValue(location.associatedCorner);
    m_attachCorner->SetItemValue(location.attachCorner);
    m_overflowDirection->SetItemValue(location.overflowDirection);

    m_blockId->SetItems(blockIds());
    if (!location.blockId.empty()) {
        try {
            m_blockId->SetItemValue(location.blockId);
        } catch (const KivNX::UI::NoSuchEntryError&) {
            KivNX::UI::informationDialog("Information", "Block Layout with ID '" +
                                                            location.blockId +
                                                            "' was not found. Setting Block ID "
                                                            "to first entry.");
        }
    }
    return onBlockIdActivated(event);
}

DialogState BlockLocationDialog::onBlockIdActivated(StylerEvent* /*event*/) {
    const std::string blockId = m_blockId->ItemValueString();

    // A block is never placed relative to itself.
    std::vector<std::string> associates{kDrawing};
    for (const std::string& id : blockIds()) {
        if (id != blockId) {
            associates.push_back(id);
        }
    }
    std::vector<std::string> styles{kAnyStyle};
    if (const auto layout = QorBorder::DefDocumentManager().getBlockLayout(blockId)) {
        for (const auto& style : layout->styles()) {
            styles.push_back(style->id);
        }
    }

    // Both menus get the chosen block's entries before either selects: when the stored value is
    // not among them, the selection throws (the dialog framework tells the user), and neither
    // menu may then still offer the previous block's entries.
    m_associateTo->SetItems(associates);
    m_blockStyle->SetItems(styles);
    // The stored values, not the user's last choices, are selected again for every block.
    m_associateTo->SetItemValue(m_location->associatedBlockId);
    m_blockStyle->SetItemValue(m_location->styleId);
    return DialogStateContinueDialog;
}

DialogState BlockLocationDialog::onOk(StylerEvent* /*event*/) {
    if (m_id->ItemValue().empty()) {
        return KivNX::UI::refuse(*m_id, KivNX::UI::kValidationError, "ID must not be empty.");
    }
    if (m_dialogText->ItemValue().empty()) {
        return KivNX::UI::refuse(*m_dialogText, KivNX::UI::kValidationError,
                                 "Dialog text must not be empty.");
    }
    // Only a new or copied location is checked: an edited one may keep, or take, any ID.
    if (!m_editMode && QorBorder::DefDocumentManager().getBlockLocation(
                           m_blockId->ItemValueString(), m_id->ItemValue())) {
        return KivNX::UI::refuse(*m_id, KivNX::UI::kDuplicateError,
                                 "A location with same ID for block ID already exists.");
    }

    writeControls();
    return DialogStateExitDialog;
}

void BlockLocationDialog::writeControls() {
    QorBorder::BlockLocation& location = *m_location;
    location.id = m_id->ItemValue();
    location.dialogText = m_dialogText->ItemValue();
    location.blockId = m_blockId->ItemValueString();
    // Exact comparisons: a style or block really called "Any Style" or "Drawing" is stored as
    // empty too, which is intended.
    const std::string style = m_blockStyle->ItemValueString();
    location.styleId = style == kAnyStyle ? std::string() : style;
    const std::string associate = m_associateTo->ItemValueString();
    location.associatedBlockId = associate == kDrawing ? std::string() : associate;
    location.offsetX = m_offsetX->ItemValue();
    location.offsetY = m_offsetY->ItemValue();
    location.associatedCorner = m_associatedCorner->ItemValue();
    location.attachCorner = m_attachCorner->ItemValue();
    location.overflowDirection = m_overflowDirection->ItemValue();
}

} // namespace QorBorderConf
