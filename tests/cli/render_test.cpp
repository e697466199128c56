// Drawing borders: the geometry of the example site's ISO A3 and ASME D frames, checked in the
// drawing and in the SVG that Cairo writes, and the files of each output format.
#include "render.h"

#include "site.h"

#include "model/fordef_reader.h"
#include "model/zone_scheme.h"
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <cairo.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <sstream>

using namespace QorfmtCli;
namespace fs = boost::filesystem;

namespace {

const fs::path kSiteDocuments = fs::path(QORFMT_EXAMPLES_DIR) / "site" / "format_defs";
const fs::path kIsoBorders = kSiteDocuments / "iso5457_borders.fordef";
const fs::path kAsmeBorders = kSiteDocuments / "asme_y14_1_borders.fordef";

FrameDrawing drawingOf(const fs::path& file, const std::string& borderId,
                       const std::string& sizeName) {
    const auto document = QorBorder::FordefReader::read(file);
    const auto border = document->getBorderLayout(borderId);
    for (const QorBorder::DrawingSize& size : border->drawingSizes()) {
        if (size.name == sizeName) {
            return frameDrawing(*border, size);
        }
    }
    ADD_FAILURE() << "no size " << sizeName;
    return {};
}

std::vector<std::string> labels(const std::vector<Zone>& zones) {
    std::vector<std::string> result;
    for (const Zone& zone : zones) {
        result.push_back(zone.label);
    }
    return result;
}

struct Point {
    double x;
    double y;
};

// The stroked paths of an SVG written by Cairo, outside its glyph definitions: each a list of
// subpaths, each a list of points (curves are not expected in frames).
std::vector<std::vector<Point>> strokedPaths(const fs::path& svg) {
    pugi::xml_document xml;
    EXPECT_TRUE(xml.load_file(svg.string().c_str())) << svg;
    std::vector<std::vector<Point>> paths;
    for (const pugi::xpath_node& node : xml.select_nodes("/svg/path | /svg/g//path")) {
        const pugi::xml_node path = node.node();
        if (std::string(path.attribute("style").value()).find("fill:none") == std::string::npos) {
            continue;
        }
        EXPECT_FALSE(path.attribute("transform")) << "paths are drawn in sheet units";
        std::istringstream data(path.attribute("d").value());
        std::vector<Point> points;
        std::string token;
        while (data >> token) {
            if (token == "M" || token == "L") {
                Point p{};
                data >> p.x >> p.y;
                if (token == "M" && !points.empty()) {
                    paths.push_back(points);
                    points.clear();
                }
                points.push_back(p);
            } else if (token != "Z") {
                ADD_FAILURE() << "unexpected path command " << token;
            }
        }
        paths.push_back(points);
    }
    return paths;
}

// Cairo keeps coordinates to 1/256 of a unit.
bool near(double a, double b) {
    return std::fabs(a - b) < 0.005;
}

bool hasRectangle(const std::vector<std::vector<Point>>& paths, double left, double top,
                  double right, double bottom) {
    for (const auto& points : paths) {
        if (points.size() == 4 && near(points[0].x, left) && near(points[0].y, top) &&
            near(points[1].x, right) && near(points[1].y, top) && near(points[2].x, right) &&
            near(points[2].y, bottom) && near(points[3].x, left) && near(points[3].y, bottom)) {
            return true;
        }
    }
    return false;
}

bool hasLine(const std::vector<std::vector<Point>>& paths, Point a, Point b) {
    for (const auto& points : paths) {
        if (points.size() != 2) {
            continue;
        }
        const bool forward = near(points[0].x, a.x) && near(points[0].y, a.y) &&
                             near(points[1].x, b.x) && near(points[1].y, b.y);
        const bool backward = near(points[0].x, b.x) && near(points[0].y, b.y) &&
                              near(points[1].x, a.x) && near(points[1].y, a.y);
        if (forward || backward) {
            return true;
        }
    }
    return false;
}

std::size_t lineCount(const std::vector<std::vector<Point>>& paths) {
    return static_cast<std::size_t>(std::count_if(
        paths.begin(), paths.end(), [](const auto& points) { return points.size() == 2; }));
}

class Render : public ::testing::Test {
protected:
    int render(const fs::path& file, const std::string& border, const std::string& size,
               const std::string& output) {
        RenderOptions options;
        options.file = file.string();
        options.border = border;
        options.size = size;
        options.output = output.empty() ? "" : (m_dir.path() / output).string();
        m_out.str("");
        m_err.str("");
        return runRender(options, m_out, m_err);
    }

    TestUtil::TempDir m_dir;
    std::ostringstream m_out;
    std::ostringstream m_err;
};

} // namespace

TEST(FrameDrawing, IsoA3FrameLiesTwentyMillimetresFromTheLeftAndTenElsewhere) {
    const FrameDrawing a3 = drawingOf(kIsoBorders, "ISO5457", "A3");
    EXPECT_TRUE(a3.millimetres);
    EXPECT_EQ(a3.length, 420);
    EXPECT_EQ(a3.height, 297);
    EXPECT_EQ(a3.frameLeft, 20);
    EXPECT_EQ(a3.frameBottom, 10);
    EXPECT_EQ(a3.frameRight, 410);
    EXPECT_EQ(a3.frameTop, 287);
    EXPECT_EQ(a3.title, "A3: A3 landscape, 420 x 297 mm");
}

// ISO 5457 numbers from the top left corner: 1 to 8 from the left, A to F from the top.
TEST(FrameDrawing, IsoA3ZonesAreNumberedFromTheTopLeft) {
    const FrameDrawing a3 = drawingOf(kIsoBorders, "ISO5457", "A3");
    ASSERT_EQ(a3.horizontalZones.size(), 8u);
    EXPECT_EQ(labels(a3.horizontalZones),
              (std::vector<std::string>{"1", "2", "3", "4", "5", "6", "7", "8"}));
    EXPECT_EQ(a3.horizontalZones[0].from, 20);
    EXPECT_EQ(a3.horizontalZones[0].to, 68.75);
    EXPECT_EQ(a3.horizontalZones[7].to, 410);
    ASSERT_EQ(a3.verticalZones.size(), 6u);
    EXPECT_EQ(labels(a3.verticalZones), (std::vector<std::string>{"F", "E", "D", "C", "B", "A"}));
    EXPECT_EQ(a3.verticalZones[0].from, 10);
    EXPECT_EQ(a3.verticalZones[5].to, 287);
}

// ASME Y14.1 numbers from the lower right corner: 1 at the right, A at the bottom.
TEST(FrameDrawing, AsmeDZonesAreNumberedFromTheBottomRight) {
    const FrameDrawing d = drawingOf(kAsmeBorders, "ASMEY141D", "D");
    EXPECT_FALSE(d.millimetres);
    EXPECT_EQ(d.frameLeft, 1);
    EXPECT_EQ(d.frameRight, 33);
    EXPECT_EQ(d.frameBottom, 0.5);
    EXPECT_EQ(d.frameTop, 21.5);
    EXPECT_EQ(labels(d.horizontalZones),
              (std::vector<std::string>{"8", "7", "6", "5", "4", "3", "2", "1"}));
    EXPECT_EQ(d.horizontalZones[0].to, 5);
    EXPECT_EQ(labels(d.verticalZones), (std::vector<std::string>{"A", "B", "C", "D"}));
    EXPECT_EQ(d.verticalZones[0].to, 5.75);
}

TEST(FrameDrawing, AnEdgeWithoutZoneNumberingHasNoZones) {
    QorBorder::BorderLayout border;
    border.units = QorBorder::Millimeters;
    border.bottomLeft = {10, 10, 0};
    border.topRight = {10, 10, 0};
    border.horizontalZoneType = QorBorder::ZoneNone;
    border.verticalZoneType = QorBorder::ZoneLetters;
    QorBorder::DrawingSize size;
    size.length = 100;
    size.height = 50;
    size.horizontalZones = 4;
    size.verticalZones = 2;
    const FrameDrawing drawing = frameDrawing(border, size);
    EXPECT_TRUE(drawing.horizontalZones.empty());
    EXPECT_EQ(labels(drawing.verticalZones), (std::vector<std::string>{"B", "A"}));
}

TEST(FrameDrawing, AFrameOutsideTheSheetIsRefused) {
    QorBorder::BorderLayout border;
    border.id = "WIDE";
    border.units = QorBorder::Millimeters;
    border.bottomLeft = {60, 10, 0};
    border.topRight = {60, 10, 0};
    QorBorder::DrawingSize size;
    size.name = "S";
    size.length = 100;
    size.height = 50;
    EXPECT_THROW(frameDrawing(border, size), InputError);
    size.length = 0;
    EXPECT_THROW(frameDrawing(border, size), InputError);
    border.units = 7;
    size.length = 200;
    EXPECT_THROW(frameDrawing(border, size), InputError);
}

// Documents built in memory are not read through the reader's checks; what is drawn is checked
// again before anything is allocated for it.
TEST(FrameDrawing, ZoneCountsNoDrawingCanHaveAreRefusedBeforeTheZonesAreMade) {
    QorBorder::BorderLayout border;
    border.id = "MANY";
    border.units = QorBorder::Millimeters;
    border.bottomLeft = {10, 10, 0};
    border.topRight = {10, 10, 0};
    border.horizontalZoneType = QorBorder::ZoneLetters;
    QorBorder::DrawingSize size;
    size.name = "S";
    size.length = 100;
    size.height = 50;
    size.horizontalZones = 2147483647;
    try {
        frameDrawing(border, size);
        FAIL() << "drew 2147483647 zones";
    } catch (const InputError& error) {
        EXPECT_EQ(std::string(error.what()), "drawing size 'S' of border 'MANY' has 2147483647 "
                                             "zones along an edge; a drawing has from 0 to 1000");
    }
    size.horizontalZones = 1000;
    EXPECT_EQ(frameDrawing(border, size).horizontalZones.size(), 1000u);
}

TEST(FrameDrawing, ASheetLongerThanAHundredMetresIsRefused) {
    QorBorder::BorderLayout border;
    border.id = "HUGE";
    border.units = QorBorder::Inches;
    QorBorder::DrawingSize size;
    size.name = "S";
    size.length = 1e308;
    size.height = 50;
    EXPECT_THROW(frameDrawing(border, size), InputError);
    size.length = 100000.0 / 25.4; // 100 m
    EXPECT_NO_THROW(frameDrawing(border, size));
}

TEST_F(Render, APngOfMoreThanCairosPixelsIsRefusedBeforeTheImageIsMade) {
    // A 10 m sheet at 96 dots per inch would be 37,796 pixels long.
    const fs::path file = m_dir.write(
        "long.fordef",
        "<fordef version=\"1\">\n"
        "  <border id=\"LONG\" description=\"\" category=\"\" units=\"2\" layer=\"0\" "
        "horizontalZoneType=\"0\" verticalZoneType=\"0\" zoneStart=\"0\">\n"
        "    <bottomLeft x=\"10\" y=\"10\" z=\"0\"/>\n"
        "    <topRight x=\"10\" y=\"10\" z=\"0\"/>\n"
        "    <drawingSize templateFile=\"\" name=\"L\" description=\"\" label=\"\" height=\"297\" "
        "length=\"10000\" frameLength=\"0\" horizontalZones=\"0\" verticalZones=\"0\"/>\n"
        "  </border>\n"
        "</fordef>\n");
    EXPECT_EQ(render(file, "LONG", "L", "l.png"), 2);
    EXPECT_EQ(m_err.str(), "qorfmt render: " + (m_dir.path() / "l.png").string() +
                               ": the image would be 37796 x 1123 pixels, more than 32767 along an "
                               "edge; choose a lower --dpi\n");
    EXPECT_FALSE(fs::exists(m_dir.path() / "l.png"));
}

TEST_F(Render, IsoA3SvgHasSheetFrameAndZoneMarksInMillimetres) {
    ASSERT_EQ(render(kIsoBorders, "ISO5457", "A3", "a3.svg"), 0) << m_err.str();
    const fs::path svg = m_dir.path() / "a3.svg";
    pugi::xml_document xml;
    ASSERT_TRUE(xml.load_file(svg.string().c_str()));
    EXPECT_STREQ(xml.child("svg").attribute("width").value(), "420mm");
    EXPECT_STREQ(xml.child("svg").attribute("height").value(), "297mm");
    EXPECT_STREQ(xml.child("svg").attribute("viewBox").value(), "0 0 420 297");

    // SVG measures y downward from the top edge.
    const auto paths = strokedPaths(svg);
    EXPECT_TRUE(hasRectangle(paths, 0, 0, 420, 297)) << "sheet";
    EXPECT_TRUE(hasRectangle(paths, 20, 10, 410, 287)) << "frame";
    for (int i = 1; i < 8; ++i) {
        const double x = 20 + 48.75 * i;
        EXPECT_TRUE(hasLine(paths, {x, 0}, {x, 10})) << "top mark " << i;
        EXPECT_TRUE(hasLine(paths, {x, 287}, {x, 297})) << "bottom mark " << i;
    }
    for (int i = 1; i < 6; ++i) {
        const double y = 10 + (287.0 - 10) / 6 * i;
        EXPECT_TRUE(hasLine(paths, {0, y}, {20, y})) << "left mark " << i;
        EXPECT_TRUE(hasLine(paths, {410, y}, {420, y})) << "right mark " << i;
    }
    EXPECT_EQ(lineCount(paths), 2u * 7 + 2u * 5);
    EXPECT_EQ(m_out.str(), svg.string() + ": A3\n");
}

// An inch border is drawn in millimetres too: Cairo writes glyph outlines in the document's unit
// rounded to 1/64 of it, which in inches mangles the letters in other renderers.
TEST_F(Render, AsmeDSvgHasSheetFrameAndZoneMarksInMillimetres) {
    ASSERT_EQ(render(kAsmeBorders, "ASMEY141D", "", "d.svg"), 0) << m_err.str();
    const fs::path svg = m_dir.path() / "d.svg";
    pugi::xml_document xml;
    ASSERT_TRUE(xml.load_file(svg.string().c_str()));
    EXPECT_STREQ(xml.child("svg").attribute("width").value(), "863.6mm");
    EXPECT_STREQ(xml.child("svg").attribute("viewBox").value(), "0 0 863.6 558.8");
    EXPECT_EQ(TestUtil::readFile(svg).find("transform"), std::string::npos);

    const double in = 25.4;
    const auto paths = strokedPaths(svg);
    EXPECT_TRUE(hasRectangle(paths, 0, 0, 34 * in, 22 * in)) << "sheet";
    EXPECT_TRUE(hasRectangle(paths, 1 * in, 0.5 * in, 33 * in, 21.5 * in)) << "frame";
    for (int i = 1; i < 8; ++i) {
        const double x = (1 + 4.0 * i) * in;
        EXPECT_TRUE(hasLine(paths, {x, 0}, {x, 0.5 * in})) << "top mark " << i;
        EXPECT_TRUE(hasLine(paths, {x, 21.5 * in}, {x, 22 * in})) << "bottom mark " << i;
    }
    for (int i = 1; i < 4; ++i) {
        const double y = (0.5 + 5.25 * i) * in;
        EXPECT_TRUE(hasLine(paths, {0, y}, {1 * in, y})) << "left mark " << i;
        EXPECT_TRUE(hasLine(paths, {33 * in, y}, {34 * in, y})) << "right mark " << i;
    }
    EXPECT_EQ(lineCount(paths), 2u * 7 + 2u * 3);
}

TEST_F(Render, APdfHasOnePagePerDrawingSizeAtTrueScale) {
    ASSERT_EQ(render(kIsoBorders, "ISO5457", "", "iso.pdf"), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), (m_dir.path() / "iso.pdf").string() + ": 6 pages\n");
    const std::string pdf = TestUtil::readFile(m_dir.path() / "iso.pdf");
    ASSERT_EQ(pdf.rfind("%PDF-", 0), 0u);
    std::size_t pages = 0;
    for (auto at = pdf.find("/Type /Page"); at != std::string::npos;
         at = pdf.find("/Type /Page", at + 1)) {
        pages += pdf.compare(at, 12, "/Type /Pages") == 0 ? 0 : 1;
    }
    EXPECT_EQ(pages, 6u);
    // A3 is 420 x 297 mm: 1190.55 x 841.89 points; A4 portrait 210 x 297 mm.
    EXPECT_NE(pdf.find("/MediaBox [ 0 0 1190.551181 841.889764 ]"), std::string::npos);
    EXPECT_NE(pdf.find("/MediaBox [ 0 0 595.275591 841.889764 ]"), std::string::npos) << "A4P";
}

TEST_F(Render, SeveralSizesInAnSvgOrPngGiveOneFileEach) {
    ASSERT_EQ(render(kIsoBorders, "ISO5457", "", "iso.svg"), 0) << m_err.str();
    for (const std::string size : {"A0", "A1", "A2", "A3", "A4", "A4P"}) {
        EXPECT_TRUE(fs::exists(m_dir.path() / ("iso-" + size + ".svg"))) << size;
    }
    EXPECT_FALSE(fs::exists(m_dir.path() / "iso.svg"));
}

TEST_F(Render, APngHasTheSheetSizeAtItsResolution) {
    ASSERT_EQ(render(kIsoBorders, "ISO5457", "A3", "a3.png"), 0) << m_err.str();
    const std::string png = TestUtil::readFile(m_dir.path() / "a3.png");
    ASSERT_GT(png.size(), 24u);
    ASSERT_EQ(png.substr(1, 3), "PNG");
    auto bigEndian = [&](std::size_t at) {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            value = (value << 8) | static_cast<unsigned char>(png[at + i]);
        }
        return value;
    };
    // 420 x 297 mm at 96 dots per inch, rounded up.
    EXPECT_EQ(bigEndian(16), 1588u);
    EXPECT_EQ(bigEndian(20), 1123u);
}

TEST_F(Render, AnUnknownBorderOrSizeNamesWhatThereIs) {
    EXPECT_EQ(render(kIsoBorders, "ISO9999", "", "x.pdf"), 2);
    EXPECT_EQ(m_err.str(), "qorfmt render: " + kIsoBorders.string() +
                               " has no border 'ISO9999' (it has ISO5457)\n");
    EXPECT_EQ(render(kIsoBorders, "ISO5457", "A5", "x.pdf"), 2);
    EXPECT_EQ(m_err.str(), "qorfmt render: border 'ISO5457' has no drawing size 'A5' (it has "
                           "A0, A1, A2, A3, A4, A4P)\n");
    EXPECT_FALSE(fs::exists(m_dir.path() / "x.pdf"));
}

TEST_F(Render, AnOutputOfAnotherFormatIsRefused) {
    EXPECT_EQ(render(kIsoBorders, "ISO5457", "A3", "a3.jpg"), 2);
    EXPECT_EQ(m_err.str(), "qorfmt render: " + (m_dir.path() / "a3.jpg").string() +
                               ": the output must end in .svg, .pdf or .png\n");
}

namespace {

// The dark pixels of a PNG, row by row ("" when it cannot be read).
struct Bitmap {
    int width = 0;
    int height = 0;
    std::vector<bool> dark;
    bool at(int x, int y) const {
        return x >= 0 && y >= 0 && x < width && y < height &&
               dark[static_cast<std::size_t>(y * width + x)];
    }
};

Bitmap darkPixels(const fs::path& png) {
    Bitmap bitmap;
    cairo_surface_t* image = cairo_image_surface_create_from_png(png.c_str());
    if (cairo_surface_status(image) == CAIRO_STATUS_SUCCESS) {
        cairo_surface_flush(image);
        bitmap.width = cairo_image_surface_get_width(image);
        bitmap.height = cairo_image_surface_get_height(image);
        const int stride = cairo_image_surface_get_stride(image);
        const unsigned char* data = cairo_image_surface_get_data(image);
        for (int y = 0; y < bitmap.height; ++y) {
            const auto* row = reinterpret_cast<const std::uint32_t*>(data + y * stride);
            for (int x = 0; x < bitmap.width; ++x) {
                const std::uint32_t pixel = row[x];
                const unsigned alpha = pixel >> 24;
                const unsigned green = (pixel >> 8) & 0xFF;
                // Transparent counts as white paper.
                bitmap.dark.push_back(alpha > 128 && green < 128);
            }
        }
    }
    cairo_surface_destroy(image);
    return bitmap;
}

struct Box {
    int left;
    int top;
    int right;
    int bottom;
};

constexpr int kNear = 1;
// The share of `a`'s dark pixels in the box with no dark pixel of `b` within one pixel.
double unmatched(const Bitmap& a, const Bitmap& b, const Box& box) {
    int darkCount = 0;
    int missing = 0;
    for (int y = box.top; y < box.bottom; ++y) {
        for (int x = box.left; x < box.right; ++x) {
            if (!a.at(x, y)) {
                continue;
            }
            ++darkCount;
            bool near = false;
            for (int dy = -kNear; dy <= kNear && !near; ++dy) {
                for (int dx = -kNear; dx <= kNear && !near; ++dx) {
                    near = b.at(x + dx, y + dy);
                }
            }
            missing += near ? 0 : 1;
        }
    }
    return darkCount == 0 ? 1.0 : static_cast<double>(missing) / darkCount;
}

// The boxes around the zone labels in the margins, in pixels at `dpi`.
std::vector<Box> labelBoxes(const FrameDrawing& drawing, int dpi) {
    const double perUnit = drawing.millimetres ? dpi / 25.4 : dpi;
    std::vector<Box> boxes;
    const auto box = [&](double x, double y, double half) {
        const double px = x * perUnit;
        const double py = (drawing.height - y) * perUnit;
        const double h = half * perUnit;
        boxes.push_back({static_cast<int>(px - h), static_cast<int>(py - h),
                         static_cast<int>(px + h), static_cast<int>(py + h)});
    };
    for (const Zone& zone : drawing.verticalZones) {
        box(drawing.frameLeft / 2, (zone.from + zone.to) / 2, drawing.frameLeft / 2);
    }
    const double top = drawing.height - drawing.frameTop;
    for (const Zone& zone : drawing.horizontalZones) {
        box((zone.from + zone.to) / 2, drawing.height - top / 2, top / 2);
    }
    return boxes;
}

// The page labels of a PDF's /PageLabels number tree (a flat /Nums array), as a reader shows
// them: each range's prefix, then its decimal number when it has the style /D.
std::vector<std::string> pageLabels(const std::string& pdf, int pages) {
    std::vector<std::string> labels(static_cast<std::size_t>(pages));
    const std::size_t begin = pdf.find("/Nums [");
    const std::size_t end = pdf.find(']', begin);
    if (begin == std::string::npos || end == std::string::npos) {
        return {};
    }
    std::istringstream nums(pdf.substr(begin + 7, end - begin - 7));
    struct Range {
        int start;
        std::string prefix;
        bool decimal;
        int first;
    };
    std::vector<Range> ranges;
    std::string token;
    while (nums >> token) {
        Range range{std::stoi(token), "", false, 1};
        std::string entry;
        std::getline(nums, entry, '>');
        nums.ignore(1);
        const std::size_t prefix = entry.find("/P (");
        if (prefix != std::string::npos) {
            range.prefix = entry.substr(prefix + 4, entry.find(')', prefix) - prefix - 4);
        }
        range.decimal = entry.find("/S /D") != std::string::npos;
        const std::size_t st = entry.find("/St ");
        if (st != std::string::npos) {
            range.first = std::stoi(entry.substr(st + 4));
        }
        ranges.push_back(range);
    }
    for (std::size_t r = 0; r < ranges.size(); ++r) {
        const int stop = r + 1 < ranges.size() ? ranges[r + 1].start : pages;
        for (int page = ranges[r].start; page < stop && page < pages; ++page) {
            labels[static_cast<std::size_t>(page)] =
                ranges[r].prefix +
                (ranges[r].decimal ? std::to_string(ranges[r].first + page - ranges[r].start) : "");
        }
    }
    return labels;
}

} // namespace

// Another renderer (librsvg, as in image viewers and browsers on Linux) draws the zone letters of
// the SVG as Cairo draws them in the PNG, those of the inch borders included.
TEST_F(Render, SvgZoneLettersDrawnByRsvgMatchThePng) {
    constexpr int kDpi = 300;
    for (const auto& border : {std::make_pair(kAsmeBorders, std::string("ASMEY141A")),
                               std::make_pair(kIsoBorders, std::string("ISO5457"))}) {
        SCOPED_TRACE(border.second);
        const std::string size = border.second == "ISO5457" ? "A4" : "A";
        ASSERT_EQ(render(border.first, border.second, size, "own.svg"), 0) << m_err.str();
        RenderOptions options;
        options.file = border.first.string();
        options.border = border.second;
        options.size = size;
        options.output = (m_dir.path() / "own.png").string();
        options.dpi = kDpi;
        ASSERT_EQ(runRender(options, m_out, m_err), 0) << m_err.str();
        const std::string command = std::string(QORFMT_RSVG_CONVERT) + " -d " +
                                    std::to_string(kDpi) + " -p " + std::to_string(kDpi) +
                                    " -b white '" + (m_dir.path() / "own.svg").string() + "' -o '" +
                                    (m_dir.path() / "rsvg.png").string() + "'";
        ASSERT_EQ(std::system(command.c_str()), 0);
        const Bitmap own = darkPixels(m_dir.path() / "own.png");
        const Bitmap other = darkPixels(m_dir.path() / "rsvg.png");
        ASSERT_GT(own.width, 0);
        EXPECT_NEAR(other.width, own.width, 1);
        EXPECT_NEAR(other.height, own.height, 1);
        const std::vector<Box> boxes =
            labelBoxes(drawingOf(border.first, border.second, size), kDpi);
        ASSERT_FALSE(boxes.empty());
        for (const Box& box : boxes) {
            EXPECT_LT(unmatched(own, other, box), 0.01) << box.left << "," << box.top;
            EXPECT_LT(unmatched(other, own, box), 0.01) << box.left << "," << box.top;
        }
    }
}

TEST_F(Render, APngRecordsItsResolution) {
    RenderOptions options;
    options.file = kIsoBorders.string();
    options.border = "ISO5457";
    options.size = "A4";
    options.output = (m_dir.path() / "a4.png").string();
    options.dpi = 300;
    ASSERT_EQ(runRender(options, m_out, m_err), 0) << m_err.str();
    const std::string png = TestUtil::readFile(options.output);
    const std::size_t at = png.find("pHYs");
    ASSERT_EQ(at, 8u + 25u + 4u) << "right after the header";
    // 300 dots per inch are 11811 per metre, in both directions; the unit is the metre.
    EXPECT_EQ(png.substr(at + 4, 9), std::string("\x00\x00\x2e\x23\x00\x00\x2e\x23\x01", 9));
    cairo_surface_t* image = cairo_image_surface_create_from_png(options.output.c_str());
    EXPECT_EQ(cairo_surface_status(image), CAIRO_STATUS_SUCCESS) << "the chunk's CRC is right";
    cairo_surface_destroy(image);
}

TEST_F(Render, APdfHasATitleAndAPageLabelPerSize) {
    ASSERT_EQ(render(kIsoBorders, "ISO5457", "", "iso.pdf"), 0) << m_err.str();
    const std::string pdf = TestUtil::readFile(m_dir.path() / "iso.pdf");
    EXPECT_NE(pdf.find("/Title (Border ISO5457: ISO 5457 drawing frame with grid reference, A0 to "
                       "A4)"),
              std::string::npos);
    EXPECT_NE(pdf.find("/PageLabels"), std::string::npos);
    EXPECT_EQ(pageLabels(pdf, 6), (std::vector<std::string>{"A0", "A1", "A2", "A3", "A4", "A4P"}));
}

TEST_F(Render, AllDrawsEveryBorderInItsOwnFile) {
    RenderOptions options;
    options.file = kAsmeBorders.string();
    options.all = true;
    options.output = (m_dir.path() / "asme.pdf").string();
    ASSERT_EQ(runRender(options, m_out, m_err), 0) << m_err.str();
    std::string expected;
    for (const std::string border :
         {"ASMEY141A", "ASMEY141B", "ASMEY141C", "ASMEY141D", "ASMEY141E"}) {
        const fs::path file = m_dir.path() / ("asme-" + border + ".pdf");
        EXPECT_TRUE(fs::exists(file)) << file;
        expected += file.string() + ": 1 page\n";
    }
    EXPECT_EQ(m_out.str(), expected);
}

TEST_F(Render, ListNamesTheBordersAndTheirSizes) {
    RenderOptions options;
    options.file = kIsoBorders.string();
    options.list = true;
    ASSERT_EQ(runRender(options, m_out, m_err), 0) << m_err.str();
    EXPECT_EQ(m_out.str(), "ISO5457: A0 1189 x 841 mm, A1 841 x 594 mm, A2 594 x 420 mm, A3 420 "
                           "x 297 mm, A4 297 x 210 mm, A4P 210 x 297 mm\n");
    options.file = kAsmeBorders.string();
    ASSERT_EQ(runRender(options, m_out, m_err), 0);
    EXPECT_NE(m_out.str().find("ASMEY141D: D 34 x 22 in\n"), std::string::npos) << m_out.str();
}

TEST_F(Render, WithoutABorderOrAllOrListNothingIsDrawn) {
    RenderOptions options;
    options.file = kIsoBorders.string();
    EXPECT_EQ(runRender(options, m_out, m_err), 2);
    EXPECT_NE(m_err.str().find("name the border (--border ID), or give --all or --list"),
              std::string::npos);
}
