#include "render.h"

#include "input.h"
#include "site.h"

#include "model/document_error.h"
#include "model/fordef_format.h"
#include "model/fordef_reader.h"
#include "model/fordef_writer.h"
#include "model/frame_units_type.h"
#include "model/zone_scheme.h"

#include <boost/filesystem/path.hpp>

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <memory>
#include <ostream>

namespace fs = boost::filesystem;
using namespace QorBorder;

namespace QorfmtCli {

namespace {

constexpr double kPointsPerInch = 72.0;
constexpr double kMillimetresPerInch = 25.4;
// The longest sheet edge drawn (100 m); beyond it a drawing is taken for a wrong number.
constexpr double kMaxSheetMillimetres = 100000.0;
// The most pixels along an edge of an image (Cairo's own limit).
constexpr double kMaxPixels = 32767.0;

std::string q(const std::string& text) {
    return "'" + text + "'";
}

std::string numberText(double value) {
    std::string text = std::to_string(value);
    text.erase(text.find_last_not_of('0') + 1);
    if (!text.empty() && text.back() == '.') {
        text.pop_back();
    }
    return text;
}

// The zones of one edge from `from` to `to` (increasing), labelled from the start corner's side.
std::vector<Zone> zonesOf(int zoneType, int count, double from, double to, bool countForward) {
    std::vector<Zone> zones;
    if (!numbersZones(zoneType)) {
        return zones;
    }
    const std::vector<double> bounds = zoneBoundaries(from, to, count);
    for (int i = 0; i + 1 < static_cast<int>(bounds.size()); ++i) {
        const int ordinal = countForward ? i : count - 1 - i;
        zones.push_back({bounds[static_cast<std::size_t>(i)],
                         bounds[static_cast<std::size_t>(i) + 1], zoneLabel(zoneType, ordinal)});
    }
    return zones;
}

// Line widths and text heights of a drawing, in its units.
struct Pens {
    double sheet;
    double frame;
    double zone;
    double title;
    double label;
};

Pens pensFor(const FrameDrawing& drawing) {
    const double mm = drawing.millimetres ? 1.0 : 1.0 / kMillimetresPerInch;
    const double margin =
        std::min({drawing.frameLeft, drawing.frameBottom, drawing.length - drawing.frameRight,
                  drawing.height - drawing.frameTop});
    return {0.25 * mm, 0.7 * mm, 0.35 * mm, 5.0 * mm, std::min(3.5 * mm, 0.6 * margin)};
}

// Draws with y measured upward from the sheet's lower edge, as the model does.
class Painter {
public:
    Painter(cairo_t* cr, const FrameDrawing& drawing) : m_cr(cr), m_height(drawing.height) {}

    void rectangle(double left, double bottom, double right, double top, double width) {
        cairo_set_line_width(m_cr, width);
        cairo_rectangle(m_cr, left, m_height - top, right - left, top - bottom);
        cairo_stroke(m_cr);
    }
    void line(double x1, double y1, double x2, double y2, double width) {
        cairo_set_line_width(m_cr, width);
        cairo_move_to(m_cr, x1, m_height - y1);
        cairo_line_to(m_cr, x2, m_height - y2);
        cairo_stroke(m_cr);
    }
    void centredText(const std::string& text, double x, double y, double size) {
        if (text.empty() || size <= 0) {
            return;
        }
        cairo_set_font_size(m_cr, size);
        cairo_text_extents_t extents;
        cairo_text_extents(m_cr, text.c_str(), &extents);
        cairo_move_to(m_cr, x - extents.width / 2 - extents.x_bearing,
                      m_height - y - extents.height / 2 - extents.y_bearing);
        cairo_show_text(m_cr, text.c_str());
    }
    void text(const std::string& text, double x, double y, double size) {
        cairo_set_font_size(m_cr, size);
        cairo_move_to(m_cr, x, m_height - y);
        cairo_show_text(m_cr, text.c_str());
    }

private:
    cairo_t* m_cr;
    double m_height;
};

// Draws one drawing size on a page whose user units are the drawing's units.
void draw(cairo_t* cr, const FrameDrawing& drawing) {
    const Pens pens = pensFor(drawing);
    Painter painter(cr, drawing);
    cairo_set_source_rgb(cr, 0, 0, 0);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
    cairo_select_font_face(cr, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);

    painter.rectangle(0, 0, drawing.length, drawing.height, pens.sheet);
    painter.rectangle(drawing.frameLeft, drawing.frameBottom, drawing.frameRight, drawing.frameTop,
                      pens.frame);

    // Zone marks run across the margins, from the frame to the sheet edge, at every boundary
    // between two zones; the labels stand in the middle of each zone on both sides.
    const auto& across = drawing.horizontalZones;
    for (std::size_t i = 0; i < across.size(); ++i) {
        if (i > 0) {
            painter.line(across[i].from, drawing.frameTop, across[i].from, drawing.height,
                         pens.zone);
            painter.line(across[i].from, 0, across[i].from, drawing.frameBottom, pens.zone);
        }
        const double x = (across[i].from + across[i].to) / 2;
        painter.centredText(across[i].label, x, (drawing.frameTop + drawing.height) / 2,
                            pens.label);
        painter.centredText(across[i].label, x, drawing.frameBottom / 2, pens.label);
    }
    const auto& up = drawing.verticalZones;
    for (std::size_t i = 0; i < up.size(); ++i) {
        if (i > 0) {
            painter.line(0, up[i].from, drawing.frameLeft, up[i].from, pens.zone);
            painter.line(drawing.frameRight, up[i].from, drawing.length, up[i].from, pens.zone);
        }
        const double y = (up[i].from + up[i].to) / 2;
        painter.centredText(up[i].label, drawing.frameLeft / 2, y, pens.label);
        painter.centredText(up[i].label, (drawing.frameRight + drawing.length) / 2, y, pens.label);
    }

    const double inset = 2 * pens.title;
    painter.text(drawing.title, drawing.frameLeft + inset,
                 drawing.frameTop - inset - pens.title / 2, pens.title);
}

// How many output units one drawing unit is.
double unitScale(const FrameDrawing& drawing, double outputUnitsPerInch) {
    return drawing.millimetres ? outputUnitsPerInch / kMillimetresPerInch : outputUnitsPerInch;
}

cairo_status_t appendTo(void* closure, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct ContextDeleter {
    void operator()(cairo_t* cr) const { cairo_destroy(cr); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;
using Context = std::unique_ptr<cairo_t, ContextDeleter>;

void check(cairo_status_t status, const std::string& file) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw InputError(file + ": cannot draw: " + cairo_status_to_string(status));
    }
}

void save(const std::string& file, const std::string& content) {
    if (file == kStandardStream) {
        std::cout.write(content.data(), static_cast<std::streamsize>(content.size()));
        std::cout.flush();
        if (!std::cout) {
            throw InputError("standard output: cannot write the drawing");
        }
        return;
    }
    try {
        replaceFileAtomically(file, content);
    } catch (const DocumentError& e) {
        throw InputError(e.what());
    }
}

void writePdf(const std::vector<FrameDrawing>& drawings, const std::string& file,
              const std::string& title) {
    std::string content;
    {
        const double scale = unitScale(drawings[0], kPointsPerInch);
        Surface surface(cairo_pdf_surface_create_for_stream(
            appendTo, &content, drawings[0].length * scale, drawings[0].height * scale));
        cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE, title.c_str());
        cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATOR, "qorfmt render");
        Context cr(cairo_create(surface.get()));
        for (const FrameDrawing& drawing : drawings) {
            const double pageScale = unitScale(drawing, kPointsPerInch);
            cairo_pdf_surface_set_page_label(surface.get(), drawing.sizeName.c_str());
            cairo_pdf_surface_set_size(surface.get(), drawing.length * pageScale,
                                       drawing.height * pageScale);
            cairo_save(cr.get());
            cairo_scale(cr.get(), pageScale, pageScale);
            draw(cr.get(), drawing);
            cairo_restore(cr.get());
            cairo_show_page(cr.get());
        }
        check(cairo_status(cr.get()), file);
        cairo_surface_finish(surface.get());
        check(cairo_surface_status(surface.get()), file);
    }
    save(file, content);
}

// The same drawing measured in millimetres.
FrameDrawing inMillimetres(FrameDrawing drawing) {
    if (drawing.millimetres) {
        return drawing;
    }
    for (double* value : {&drawing.length, &drawing.height, &drawing.frameLeft,
                          &drawing.frameBottom, &drawing.frameRight, &drawing.frameTop}) {
        *value *= kMillimetresPerInch;
    }
    for (std::vector<Zone>* zones : {&drawing.horizontalZones, &drawing.verticalZones}) {
        for (Zone& zone : *zones) {
            zone.from *= kMillimetresPerInch;
            zone.to *= kMillimetresPerInch;
        }
    }
    drawing.millimetres = true;
    return drawing;
}

void writeSvg(const FrameDrawing& inAnyUnit, const std::string& file) {
    std::string content;
    {
        // Millimetres for every border, text included: Cairo writes glyph outlines in the
        // document's unit, rounded to 1/64 of it, so that in inches the letters come out
        // mangled in renderers other than Cairo.
        const FrameDrawing drawing = inMillimetres(inAnyUnit);
        Surface surface(cairo_svg_surface_create_for_stream(appendTo, &content, drawing.length,
                                                            drawing.height));
        cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_MM);
        Context cr(cairo_create(surface.get()));
        draw(cr.get(), drawing);
        check(cairo_status(cr.get()), file);
        cairo_surface_finish(surface.get());
        check(cairo_surface_status(surface.get()), file);
    }
    save(file, content);
}

// CRC-32 of PNG chunks (ISO 3309).
std::uint32_t crc32(const std::string& bytes) {
    std::uint32_t crc = 0xFFFFFFFFu;
    for (const char c : bytes) {
        crc ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
        }
    }
    return crc ^ 0xFFFFFFFFu;
}

void appendBigEndian(std::string& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        out += static_cast<char>((value >> shift) & 0xFFu);
    }
}

// The PNG with a pHYs chunk after its header, so that viewers and printers know its
// resolution (Cairo writes none, and 72 dpi is then assumed).
std::string withResolution(const std::string& png, int dpi) {
    constexpr std::size_t kHeaderEnd = 8 + 4 + 4 + 13 + 4; // signature and IHDR chunk
    if (png.size() < kHeaderEnd) {
        return png;
    }
    const auto pixelsPerMetre = static_cast<std::uint32_t>(std::lround(dpi / 0.0254));
    std::string chunk = "pHYs";
    appendBigEndian(chunk, pixelsPerMetre);
    appendBigEndian(chunk, pixelsPerMetre);
    chunk += '\x01'; // the unit is the metre
    std::string block;
    appendBigEndian(block, 9);
    block += chunk;
    appendBigEndian(block, crc32(chunk));
    return png.substr(0, kHeaderEnd) + block + png.substr(kHeaderEnd);
}

void writePng(const FrameDrawing& drawing, const std::string& file, int dpi) {
    const double scale = unitScale(drawing, dpi);
    const double pixelsWide = std::ceil(drawing.length * scale);
    const double pixelsHigh = std::ceil(drawing.height * scale);
    // Checked before the image is made, and before the casts below could overflow.
    if (!(pixelsWide <= kMaxPixels && pixelsHigh <= kMaxPixels)) {
        throw InputError(file + ": the image would be " + numberText(pixelsWide) + " x " +
                         numberText(pixelsHigh) + " pixels, more than " + numberText(kMaxPixels) +
                         " along an edge; choose a lower --dpi");
    }
    const int width = static_cast<int>(pixelsWide);
    const int height = static_cast<int>(pixelsHigh);
    std::string content;
    {
        Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
        check(cairo_surface_status(surface.get()), file);
        Context cr(cairo_create(surface.get()));
        cairo_set_source_rgb(cr.get(), 1, 1, 1);
        cairo_paint(cr.get());
        cairo_scale(cr.get(), scale, scale);
        draw(cr.get(), drawing);
        check(cairo_status(cr.get()), file);
        check(cairo_surface_write_to_png_stream(surface.get(), appendTo, &content), file);
    }
    save(file, withResolution(content, dpi));
}

std::string extensionOf(const std::string& file) {
    std::string extension = fs::path(file).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

// A file name made of an ID: characters that are not safe in a file name become '_'.
std::string fileNamePart(const std::string& id) {
    std::string name = id;
    for (char& c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '-' && c != '.') {
            c = '_';
        }
    }
    return name.empty() ? "border" : name;
}

} // namespace

FrameDrawing frameDrawing(const BorderLayout& border, const DrawingSize& size) {
    const std::string what = "drawing size " + q(size.name) + " of border " + q(border.id);
    if (border.units != Millimeters && border.units != Inches) {
        throw InputError("border " + q(border.id) + " has units " + std::to_string(border.units) +
                         ", which are neither inches (1) nor millimetres (2)");
    }
    if (!(size.length > 0) || !(size.height > 0) || !std::isfinite(size.length) ||
        !std::isfinite(size.height)) {
        throw InputError(what + " has no sheet: " + numberText(size.length) + " x " +
                         numberText(size.height));
    }
    const double toMillimetres = border.units == Millimeters ? 1.0 : kMillimetresPerInch;
    if (size.length * toMillimetres > kMaxSheetMillimetres ||
        size.height * toMillimetres > kMaxSheetMillimetres) {
        throw InputError(what + ": the " + Fordef::formatDouble(size.length) + " x " +
                         Fordef::formatDouble(size.height) +
                         " sheet is longer than 100 m along an edge");
    }
    // Checked before the zones are made: each one is an entry with its label.
    for (const int zones : {size.horizontalZones, size.verticalZones}) {
        if (zones < 0 || zones > Fordef::kMaxZones) {
            throw InputError(what + " has " + std::to_string(zones) +
                             " zones along an edge; a drawing has from 0 to " +
                             std::to_string(Fordef::kMaxZones));
        }
    }
    FrameDrawing drawing;
    drawing.millimetres = border.units == Millimeters;
    drawing.length = size.length;
    drawing.height = size.height;
    drawing.frameLeft = border.bottomLeft.x;
    drawing.frameBottom = border.bottomLeft.y;
    drawing.frameRight = size.length - border.topRight.x;
    drawing.frameTop = size.height - border.topRight.y;
    if (!(drawing.frameLeft >= 0 && drawing.frameLeft < drawing.frameRight &&
          drawing.frameRight <= drawing.length && drawing.frameBottom >= 0 &&
          drawing.frameBottom < drawing.frameTop && drawing.frameTop <= drawing.height)) {
        throw InputError(what + ": the frame corners of the border do not lie on the " +
                         numberText(size.length) + " x " + numberText(size.height) + " sheet");
    }
    drawing.horizontalZones =
        zonesOf(border.horizontalZoneType, size.horizontalZones, drawing.frameLeft,
                drawing.frameRight, zonesCountFromLeft(border.zoneStart));
    drawing.verticalZones =
        zonesOf(border.verticalZoneType, size.verticalZones, drawing.frameBottom, drawing.frameTop,
                !zonesCountFromTop(border.zoneStart));
    drawing.title = size.name + (size.description.empty() ? "" : ": " + size.description);
    drawing.sizeName = size.name;
    return drawing;
}

namespace {

// A file beside `output` named after it and `part`: OUT-PART.EXT.
std::string withPart(const std::string& output, const std::string& part) {
    const fs::path path(output);
    return (path.parent_path() /
            (path.stem().string() + "-" + fileNamePart(part) + path.extension().string()))
        .string();
}

void renderBorder(const BorderLayout& border, const RenderOptions& options,
                  const std::string& output, std::ostream& out) {
    std::vector<const DrawingSize*> sizes;
    std::string names;
    for (const DrawingSize& size : border.drawingSizes()) {
        names += (names.empty() ? "" : ", ") + size.name;
        if (options.size.empty() || size.name == options.size) {
            sizes.push_back(&size);
        }
    }
    if (sizes.empty()) {
        throw InputError("border " + q(border.id) +
                         (options.size.empty() ? " has no drawing sizes"
                                               : " has no drawing size " + q(options.size) +
                                                     " (it has " + names + ")"));
    }
    std::vector<FrameDrawing> drawings;
    for (const DrawingSize* size : sizes) {
        drawings.push_back(frameDrawing(border, *size));
    }
    const bool toStandardOutput = output == kStandardStream;
    const std::string extension = toStandardOutput ? "." + options.format : extensionOf(output);
    if (toStandardOutput && drawings.size() > 1 && extension != ".pdf") {
        throw InputError("border " + q(border.id) + " has " + std::to_string(drawings.size()) +
                         " drawing sizes, which are " + std::to_string(drawings.size()) +
                         " files in " + options.format +
                         ": standard output takes one (give --size, or a PDF)");
    }
    if (extension == ".pdf") {
        const std::string title =
            "Border " + border.id + (border.description.empty() ? "" : ": " + border.description);
        writePdf(drawings, output, title);
        if (!toStandardOutput) {
            out << output << ": " << drawings.size() << (drawings.size() == 1 ? " page" : " pages")
                << "\n";
        }
        return;
    }
    if (extension != ".svg" && extension != ".png") {
        throw InputError(output + ": the output must end in .svg, .pdf or .png");
    }
    for (std::size_t i = 0; i < drawings.size(); ++i) {
        const std::string file = drawings.size() > 1 ? withPart(output, sizes[i]->name) : output;
        if (extension == ".svg") {
            writeSvg(drawings[i], file);
        } else {
            writePng(drawings[i], file, options.dpi);
        }
        if (!toStandardOutput) {
            out << file << ": " << sizes[i]->name << "\n";
        }
    }
}

void listBorders(const DefinitionDocument& document, std::ostream& out) {
    for (const auto& border : document.borderLayoutTypes(AllUnits)) {
        const char* unit = border->units == 1 ? " in" : border->units == 2 ? " mm" : "";
        out << border->id << ":";
        std::string separator = " ";
        for (const DrawingSize& size : border->drawingSizes()) {
            out << separator << size.name << " " << numberText(size.length) << " x "
                << numberText(size.height) << unit;
            separator = ", ";
        }
        out << (border->drawingSizes().empty() ? " no drawing sizes" : "") << "\n";
    }
}

} // namespace

int runRender(const RenderOptions& options, std::ostream& out, std::ostream& err) {
    try {
        const boost::shared_ptr<DefinitionDocument> document =
            readDocumentInput(options.file).document;
        const auto borders = document->borderLayoutTypes(AllUnits);
        if (options.list) {
            listBorders(*document, out);
            return 0;
        }
        if (options.all) {
            if (options.output == kStandardStream) {
                throw InputError("--all writes a file per border; standard output takes one");
            }
            if (borders.empty()) {
                throw InputError(inputName(options.file) + " has no borders");
            }
            for (const auto& border : borders) {
                const std::string output = options.output.empty()
                                               ? fileNamePart(border->id) + ".pdf"
                                               : withPart(options.output, border->id);
                renderBorder(*border, options, output, out);
            }
            return 0;
        }
        if (options.border.empty()) {
            throw InputError("name the border (--border ID), or give --all or --list");
        }
        const auto border = document->getBorderLayout(options.border);
        if (!border) {
            std::string known;
            for (const auto& candidate : borders) {
                known += (known.empty() ? "" : ", ") + candidate->id;
            }
            throw InputError(inputName(options.file) + " has no border " + q(options.border) +
                             (known.empty() ? " (it has none)" : " (it has " + known + ")"));
        }
        renderBorder(*border, options,
                     options.output.empty() ? fileNamePart(border->id) + ".pdf" : options.output,
                     out);
        return 0;
    } catch (const InputError& e) {
        err << "qorfmt render: " << e.what() << '\n';
        return 2;
    }
}

} // namespace QorfmtCli
