#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/Drawings_DrawingSheet.hxx>

#include <memory>
#include <vector>

namespace nxsim {
class SimPart;
}

namespace NXOpen::Drawings {

/// The drawing sheets of a part.
class DrawingSheetCollection {
public:
    explicit DrawingSheetCollection(nxsim::SimPart* part);
    ~DrawingSheetCollection();
    DrawingSheetCollection(const DrawingSheetCollection&) = delete;
    DrawingSheetCollection& operator=(const DrawingSheetCollection&) = delete;

    /// The sheet open in the part, null when none is.
    DrawingSheet* CurrentDrawingSheet();

private:
    nxsim::SimPart* m_part;
    std::vector<std::unique_ptr<DrawingSheet>> m_sheets;
};

} // namespace NXOpen::Drawings
