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

#include <cmath>
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

TEST_F(Render, AsmeDSvgHasSheetFrameAndZoneMarksInInches) {
    ASSERT_EQ(render(kAsmeBorders, "ASMEY141D", "", "d.svg"), 0) << m_err.str();
    const fs::path svg = m_dir.path() / "d.svg";
    pugi::xml_document xml;
    ASSERT_TRUE(xml.load_file(svg.string().c_str()));
    EXPECT_STREQ(xml.child("svg").attribute("width").value(), "34in");
    EXPECT_STREQ(xml.child("svg").attribute("viewBox").value(), "0 0 34 22");

    const auto paths = strokedPaths(svg);
    EXPECT_TRUE(hasRectangle(paths, 0, 0, 34, 22)) << "sheet";
    EXPECT_TRUE(hasRectangle(paths, 1, 0.5, 33, 21.5)) << "frame";
    for (int i = 1; i < 8; ++i) {
        const double x = 1 + 4.0 * i;
        EXPECT_TRUE(hasLine(paths, {x, 0}, {x, 0.5})) << "top mark " << i;
        EXPECT_TRUE(hasLine(paths, {x, 21.5}, {x, 22})) << "bottom mark " << i;
    }
    for (int i = 1; i < 4; ++i) {
        const double y = 0.5 + 5.25 * i;
        EXPECT_TRUE(hasLine(paths, {0, y}, {1, y})) << "left mark " << i;
        EXPECT_TRUE(hasLine(paths, {33, y}, {34, y})) << "right mark " << i;
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
