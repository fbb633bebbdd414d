#pragma once
// The forms that are open, by name, in the order they were opened, each with the way to
// close it. Pages register themselves as they show; the end of the program closes them.
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tovel {

class clsOpenForms {
public:
    void Add(const std::string& name, std::function<void()> unload);
    /// Forgets a form (it closed by itself).
    void Remove(const std::string& name);
    /// Closes a form and forgets it; false if no such form is open.
    bool Unload(const std::string& name);
    [[nodiscard]] std::vector<std::string> Names() const;

private:
    std::vector<std::pair<std::string, std::function<void()>>> forms_;
};

} // namespace tovel
