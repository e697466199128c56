#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/BasePart.hxx>
#include <NXOpen/Drawings_DrawingSheetCollection.hxx>

#include <memory>

namespace NXOpen {

class Part : public BasePart {
public:
    explicit Part(nxsim::SimPart* part);
    ~Part() override;

    Drawings::DrawingSheetCollection* DrawingSheets();

private:
    std::unique_ptr<Drawings::DrawingSheetCollection> m_sheets;
};

} // namespace NXOpen
