#pragma once

#include <nxsim/part_file.h>
#include <nxsim/platform.h>

#include <NXOpen/Part.hxx>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace nxsim::detail {

/// A part the session loaded: its content and the NX Open object handed out for it.
struct LoadedPart {
    std::unique_ptr<SimPart> sim;
    std::unique_ptr<NXOpen::Part> part;
};

struct Fault {
    int code = 0;
    int remaining = 0; ///< 0: every call
};

/// Everything the platform remembers; one per process.
struct PlatformState {
    std::vector<ShownMessage> messages;
    std::vector<ShownPicker> pickers;
    std::vector<BoundControl> boundControls;
    std::string listing;
    bool listingOpen = false;
    std::string cue;
    std::uint64_t cueSets = 0;
    std::vector<int> toggles;
    std::vector<std::string> calls;
    int initializeDepth = 0;
    std::set<unsigned int> highlights;
    std::vector<LoadedPart> parts;
    std::vector<LoadedPart> closedParts; ///< kept so that stale pointers stay harmless
    NXOpen::Part* display = nullptr;
    NXOpen::Part* work = nullptr;
    unsigned int nextTag = 0x10000;
    std::map<std::string, Fault> faults;
    std::vector<RuntimeDialog*> shown;
    Presenter* presenter = nullptr;
};

PlatformState& state();
/// The host's stoplight listener (setStoplightListener); empty for none.
std::function<void(bool)>& stoplightListener();

/// The loaded, open part holding an object or drawing with `tag`, null when none.
SimPart* partWithTag(unsigned int tag);
const SimObject* objectWithTag(unsigned int tag);
const SimDrawing* drawingWithTag(unsigned int tag);

} // namespace nxsim::detail
