#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

namespace NXOpen {

/// The outcome of loading a part; the caller deletes it.
class PartLoadStatus {
public:
    virtual ~PartLoadStatus() = default;
    /// Components that could not be loaded; always 0 as simulated parts have none.
    int NumberUnloadedParts() { return 0; }
};

} // namespace NXOpen
