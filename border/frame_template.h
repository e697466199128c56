#pragma once

#include <boost/filesystem/path.hpp>

#include <uf_defs.h>
#include <uf_draw_types.h>

#include <optional>
#include <string>

namespace NXOpen {
class BasePart;
}

namespace QorBorderConf {

/// The folder below each search root that holds the frame template parts.
inline constexpr char kFrameTemplateFolder[] = "format_defs/frame_templates";

/// The frame template part called `name` along the search roots; empty when there is none.
boost::filesystem::path findFrameTemplate(const std::string& name);

/// Tells the user that no frame template called `name` was found.
void reportTemplateNotFound(const std::string& name);

/// A frame template opened as NX's display part, and the display part it replaced.
struct OpenedTemplate {
    NXOpen::BasePart* previous = nullptr;
    NXOpen::BasePart* opened = nullptr;
};

/// Opens `file` as the display part (NX's failures reach the caller as NXException).
OpenedTemplate openAsDisplayPart(const boost::filesystem::path& file);

/// Makes `previous` the display part again (when there was one) and closes `opened`, unless
/// `opened` is `previous` itself: a template that was already the display part stays open.
void restoreDisplayPart(NXOpen::BasePart* previous, NXOpen::BasePart* opened);

/// The height and length of a drawing sheet, in the drawing's units.
struct SheetSize {
    double height;
    double length;
};

/// The sheet size NX's drawing information stands for: the custom size as given, else the ANSI
/// (English) or ISO 216 (metric) sheet of its size code. Throws std::runtime_error for a size
/// code outside NX's tables.
SheetSize sheetSizeOf(const UF_DRAW_info_t& info);

/// The sheet size of the work part's drawing; none when the part has no drawing or more than
/// one. NX's refusal to list or describe the drawing reaches the caller as NXException.
std::optional<SheetSize> onlyDrawingSheetSize();

/// One object the user selects in the work part (its highlight taken off again); NULL_TAG when
/// the selection was cancelled or refused.
tag_t selectObject(const std::string& title);

/// The minimum distance between two objects; none when NX cannot tell it.
std::optional<double> minimumDistance(tag_t first, tag_t second);

} // namespace QorBorderConf
