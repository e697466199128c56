#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/NXString.hxx>

#include <string>

namespace nxsim {
class SimPart;
class PartAccess;
} // namespace nxsim

namespace NXOpen {

class PartCloseResponses;

/// A part loaded in the session.
class BasePart {
public:
    enum CloseWholeTree { CloseWholeTreeFalse, CloseWholeTreeTrue };
    enum CloseModified {
        CloseModifiedUseResponses,
        CloseModifiedCloseModified,
        CloseModifiedDontCloseModified
    };

    virtual ~BasePart();
    BasePart(const BasePart&) = delete;
    BasePart& operator=(const BasePart&) = delete;

    /// Unloads the part; when it was the display or work part, the session has none afterwards.
    /// Throws NXException when the part is already closed.
    void Close(CloseWholeTree wholeTree, CloseModified closeModified,
               PartCloseResponses* responses);
    /// The file the part was opened from.
    NXString FullPath();

protected:
    explicit BasePart(nxsim::SimPart* part) : m_part(part) {}

private:
    // The stand-in's own view of the part; nothing outside the stand-in reaches it.
    friend class nxsim::PartAccess;
    nxsim::SimPart* m_part;
};

} // namespace NXOpen
