#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/BasePart.hxx>
#include <NXOpen/LoadOptions.hxx>
#include <NXOpen/NXString.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/PartLoadStatus.hxx>

namespace NXOpen {

/// The parts loaded in the session, with the work part and the display part.
class PartCollection {
public:
    enum SdpsStatus { SdpsStatusOk, SdpsStatusNoPart, SdpsStatusNotFullyLoaded };

    /// The part being edited, null when none.
    Part* Work();
    /// The part shown in the graphics window, null when none.
    Part* Display();
    BasePart* BaseDisplay();
    /// Loads `file` (or takes it when loaded already) and makes it the display and work part.
    /// `status` receives a load status that the caller deletes. Throws NXException naming the
    /// file when it is missing or not a part file.
    Part* OpenDisplay(const NXString& file, PartLoadStatus** status);
    /// Makes a loaded part the display part (and the work part unless `maintainWorkPart`).
    SdpsStatus SetDisplay(BasePart* part, bool maintainWorkPart, bool setEntirePart,
                          PartLoadStatus** status);
    /// The session's load options.
    NXOpen::LoadOptions* LoadOptions();
};

} // namespace NXOpen
