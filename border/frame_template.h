#pragma once

#include <boost/filesystem/path.hpp>

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

} // namespace QorBorderConf
