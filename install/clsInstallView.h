#pragma once
// What the installation run shows, and how it leaves: the installation page implements it,
// tests record it. Lines are the products' positions in the run's list, from 1.
#include <string>

namespace tovel {

class clsInstallView {
public:
    virtual ~clsInstallView() = default;
    /// The status text beside a product's line.
    virtual void ShowProductStatus(int line, const std::string& text) = 0;
    /// Marks the line of the product being installed (0: none).
    virtual void MarkRunning(int line) = 0;
    /// Products done in this run (a resumed run counts from its own start) of its total.
    virtual void ShowProgress(int done, int total) = 0;
    /// The run has ended: the abort button and its frame go.
    virtual void ShowEndControls() = 0;
    /// The program started before a product's setup, on its own line ("": none running).
    /// Only runs whose products have such programs show the line.
    virtual void ShowStartOnBegin(const std::string& /*command*/) {}
    /// Leaves the page forwards, to the Done page.
    virtual void LeavePage() = 0;
    /// Closes the page: the machine restarts and the run resumes at the next start.
    virtual void ClosePage() = 0;
};

} // namespace tovel
