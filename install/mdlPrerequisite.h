#pragma once
// How a probe marks a prerequisite's catalogue entry: locked in its state, so the component
// page shows the verdict and the user cannot undo it.
namespace tovel {

class clsSIFApplicationItem;

/// Checked and locked (and selected) when the prerequisite must be installed; cleared and
/// locked (and not selected) when it is there already.
void MarkPrerequisite(clsSIFApplicationItem& entry, bool install);

} // namespace tovel
