#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

namespace nxsim {
struct SimDrawing;
}

namespace NXOpen::Drawings {

/// One drawing sheet of a part.
class DrawingSheet {
public:
    explicit DrawingSheet(const nxsim::SimDrawing* drawing) : m_drawing(drawing) {}
    DrawingSheet(const DrawingSheet&) = delete;
    DrawingSheet& operator=(const DrawingSheet&) = delete;

    /// The sheet's horizontal size, in the sheet's units.
    double Length();
    /// The sheet's vertical size, in the sheet's units.
    double Height();

private:
    const nxsim::SimDrawing* m_drawing;
};

} // namespace NXOpen::Drawings
