#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/ListingWindow.hxx>
#include <NXOpen/PartCollection.hxx>

namespace NXOpen {

/// The one NX session of the process.
class Session {
public:
    static Session* GetSession();
    PartCollection* Parts();
    NXOpen::ListingWindow* ListingWindow();

private:
    Session() = default;
    PartCollection m_parts;
    NXOpen::ListingWindow m_listingWindow;
};

} // namespace NXOpen
