#pragma once

#include "model/border_layout.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace QorfmtCli {

/// One zone along an edge of the frame: where it begins and ends and its label.
struct Zone {
    double from = 0.0;
    double to = 0.0;
    std::string label;
};

/// What is drawn for one drawing size of a border, in the border's units, measured from the
/// sheet's lower left corner (y up, as the model measures).
struct FrameDrawing {
    double length = 0.0; ///< of the sheet
    double height = 0.0;
    double frameLeft = 0.0;
    double frameBottom = 0.0;
    double frameRight = 0.0;
    double frameTop = 0.0;
    std::vector<Zone> horizontalZones; ///< along the length, from left to right
    std::vector<Zone> verticalZones;   ///< along the height, from bottom to top
    std::string title;                 ///< the size's name and description
    std::string sizeName;              ///< the drawing size's name (a PDF's page label)
    bool millimetres = true;           ///< else inches
};

/// The drawing of a border's drawing size. Throws InputError when the sheet has no area, the
/// frame corners lie outside it, or the border's units are neither inches nor millimetres.
FrameDrawing frameDrawing(const QorBorder::BorderLayout& border,
                          const QorBorder::DrawingSize& size);

struct RenderOptions {
    std::string file;
    std::string border;         ///< required unless `all` or `list`
    bool all = false;           ///< every border of the document, each in its own file (OUT-BORDER)
    bool list = false;          ///< only name the borders and their sizes
    std::string size;           ///< empty: every size of the border
    std::string output;         ///< .svg, .pdf or .png; empty: BORDER.pdf; "-": standard output
    std::string format = "pdf"; ///< pdf, svg or png: what standard output gets
    int dpi = 96;               ///< resolution of a PNG
};

/// Draws the border's drawing sizes at true scale: one page per size in a PDF (titled after the
/// border, each page labelled with its size), one file per size (NAME-SIZE.svg / .png) in the
/// other formats when there are several; SVGs are measured in millimetres and PNGs record their
/// resolution. With `all`, every border; with `list`, only names the borders and their sizes. Names
/// the files written on `out`. Returns 0, or 2 when the document cannot be read, the border or size
/// does not exist, the output format is unknown or the file cannot be written.
int runRender(const RenderOptions& options, std::ostream& out, std::ostream& err);

} // namespace QorfmtCli
