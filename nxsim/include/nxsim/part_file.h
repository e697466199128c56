#pragma once

#include <boost/filesystem/path.hpp>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace nxsim {

/// One drawing sheet of a simulated part.
struct SimDrawing {
    unsigned int tag = 0; ///< given by the session when the part is loaded
    std::string name;
    int sizeState = 0; ///< UF_DRAW_METRIC_SIZE 0, UF_DRAW_ENGLISH_SIZE 1, UF_DRAW_CUSTOM_SIZE 2
    int sizeCode = 0;  ///< metric A0..A4 = 1..5, English A..J = 1..8; 0 for custom
    double height = 0.0;
    double length = 0.0;
    int units = 1; ///< UF_PART_METRIC 1, UF_PART_ENGLISH 2
    double scale = 1.0;
    int projection = 1; ///< UF_DRAW_THIRD_ANGLE_PROJECTION 1, FIRST 2
    int line = 0;
};

/// A geometry object: a point (start only) or a line segment.
struct SimObject {
    enum Type { Point, Line };
    Type type = Point;
    unsigned int tag = 0; ///< as written in the file
    double start[3] = {0.0, 0.0, 0.0};
    double end[3] = {0.0, 0.0, 0.0};
    int line = 0;
};

/// A part as its file describes it.
class SimPart {
public:
    boost::filesystem::path file;
    int units = 1; ///< UF_PART_METRIC 1, UF_PART_ENGLISH 2
    std::vector<SimDrawing> drawings;
    int currentDrawing = -1; ///< index into drawings, -1 for none
    std::vector<SimObject> objects;
    unsigned int tag = 0; ///< given by the session
    bool closed = false;

    const SimObject* object(unsigned int objectTag) const;
};

/// A part file that cannot be used; what() names the file (and the line, for a malformed one).
class PartFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The sheet sizes NX knows: (height, length) of metric A0..A4 in mm and English A..J in inches.
/// Throws std::out_of_range for a code outside the table.
std::pair<double, double> metricSheetSize(int code);
std::pair<double, double> englishSheetSize(int code);

/// Reads a simulated part file; throws PartFileError.
SimPart readPartFile(const boost::filesystem::path& file);
SimPart parsePartFile(const std::string& text, const boost::filesystem::path& file);

} // namespace nxsim
