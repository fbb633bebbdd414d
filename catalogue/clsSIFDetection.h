#pragma once
// What a product's record says about the machine it is detected on: the check state its
// conditions give, its default path (expanded, or found in the registry), which removal
// entries match, and the installed version with the actions for it. The record's file facts
// (clsSIFApplicationItem::Read) are only read, so one record can be detected on any machine
// and again, each time with the same result for the same machine.
#include "catalogue/clsSIFApplicationItem.h"
#include "settings/clsPlaceholder.h"

namespace tovel {

class clsSIFDetection {
public:
    /// placeholders: what DefaultPath is expanded with (the record's own folder and disc
    /// number are added to a copy for each record); nullptr leaves DefaultPath as written.
    explicit clsSIFDetection(const clsPlaceholder* placeholders);

    /// Fills the record's machine-dependent fields, replacing what an earlier detection set,
    /// and logs as the search always has: the condition errors of TermToInstall, then of
    /// DependenceTerm, then the versions section's lines. Never throws.
    void Detect(clsSIFApplicationItem& item) const;

private:
    /// AlwaysInstall locks the box checked; a failing TermToInstall sets the state it names.
    static void DetectCheckState(clsSIFApplicationItem& item);
    static void DetectDependenceTerm(clsSIFApplicationItem& item);
    void DetectDefaultPath(clsSIFApplicationItem& item) const;
    /// Each removal entry matches when every test's value equals the expected one (ASCII case ignored).
    static void DetectDeinstallEntries(clsSIFApplicationItem& item);
    static void DetectVersions(clsSIFApplicationItem& item);

    const clsPlaceholder* placeholders_;
};

} // namespace tovel
