#pragma once

#include "ui/nx_dialog_base.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace QorBorder {
class SymbolType;
} // namespace QorBorder

namespace KivNX {
namespace UI {
template <class Controller>
class DialogBinder;
class OptionMenu;
class SingleSelectList;
class StringItem;
} // namespace UI
} // namespace KivNX

namespace QorBorderConf {

/// Edits one symbol type of a block layout: an ID symbol showing field values on two lines, or a
/// named custom symbol. The symbol type changes only on OK; the line lists are worked on in the
/// controls.
class SymbolTypeDialog : public KivNX::UI::NXDialogBase {
public:
    /// `fieldIds` are the field IDs that may be put on the symbol's lines.
    SymbolTypeDialog(const boost::shared_ptr<QorBorder::SymbolType>& symbolType,
                     const std::vector<std::string>& fieldIds);

private:
    /// The controls that maintain one line's field list.
    struct LineControls {
        boost::shared_ptr<KivNX::UI::SingleSelectList> list;
        boost::shared_ptr<KivNX::UI::OptionMenu> toAdd;
        boost::shared_ptr<NXOpen::UIStyler::PushButton> add;
        boost::shared_ptr<NXOpen::UIStyler::PushButton> moveUp;
        boost::shared_ptr<NXOpen::UIStyler::PushButton> moveDown;
        boost::shared_ptr<NXOpen::UIStyler::PushButton> remove;
    };

    void initializeDialog() override;

    DialogState onConstruct(StylerEvent* event);
    DialogState onOk(StylerEvent* event);
    DialogState onTypeActivated(StylerEvent* event);
    /// Does nothing: a new selection of a line list or add menu passes through the framework,
    /// which then brings the buttons' sensitivity up to date.
    DialogState onSelectionActivated(StylerEvent* event);
    /// A line's controls as a member, so that one handler serves either line's button.
    using Line = LineControls SymbolTypeDialog::*;
    /// The names of a line's four buttons in the resource file.
    struct LineButtonNames {
        const char* add;
        const char* moveUp;
        const char* moveDown;
        const char* remove;
    };
    template <Line line>
    void bindLineButtons(KivNX::UI::DialogBinder<SymbolTypeDialog>& bind,
                         const LineButtonNames& names);

    template <Line line>
    DialogState onAddFieldActivated(StylerEvent* event);
    template <Line line>
    DialogState onMoveUpFieldActivated(StylerEvent* event);
    template <Line line>
    DialogState onMoveDownFieldActivated(StylerEvent* event);
    template <Line line>
    DialogState onDeleteFieldActivated(StylerEvent* event);

    template <Line line>
    void updateAddFieldSensitivity(StylerItem* item);
    template <Line line>
    void updateMoveUpFieldSensitivity(StylerItem* item);
    template <Line line>
    void updateMoveDownFieldSensitivity(StylerItem* item);
    template <Line line>
    void updateDeleteFieldSensitivity(StylerItem* item);

    void applyType();
    /// The offered field IDs not yet on the line, sorted; "None" when none is left.
    void rebuildAddMenu(LineControls& line);
    void addField(LineControls& line);
    /// Swaps the selected entry with the one `step` rows away and selects it there.
    void moveField(LineControls& line, int step);
    void deleteField(LineControls& line);
    static bool canAdd(LineControls& line);
    static bool canMoveDown(LineControls& line);

    boost::shared_ptr<QorBorder::SymbolType> m_symbolType;
    std::vector<std::string> m_fieldIds;

    boost::shared_ptr<KivNX::UI::StringItem> m_dialogText;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_type;
    boost::shared_ptr<NXOpen::UIStyler::IntegerItem> m_layer;
    boost::shared_ptr<NXOpen::UIStyler::ColorTool> m_color;
    boost::shared_ptr<KivNX::UI::StringItem> m_fontName;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_symbolSize;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_textSize;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_textAspect;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_line1Scale;
    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_line2Scale;
    boost::shared_ptr<KivNX::UI::StringItem> m_customSymbolName;
    boost::shared_ptr<NXOpen::UIStyler::GroupBox> m_idSymbolGroup;
    boost::shared_ptr<NXOpen::UIStyler::GroupBox> m_customSymbolGroup;
    boost::shared_ptr<NXOpen::UIStyler::GroupBox> m_line2FieldsGroup;
    LineControls m_line1;
    LineControls m_line2;
};

} // namespace QorBorderConf
