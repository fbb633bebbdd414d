#include "ui/console/clsScriptCommand.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "common/clsString.h"

namespace tovel {

namespace {

constexpr std::array<std::pair<ScriptVerb, const char*>, 14> kVerbs = {{
    {ScriptVerb::Click, "click"}, {ScriptVerb::Choose, "choose"}, {ScriptVerb::Tick, "tick"},
    {ScriptVerb::Untick, "untick"}, {ScriptVerb::Type, "type"}, {ScriptVerb::Select, "select"}, {ScriptVerb::Enter, "enter"},
    {ScriptVerb::Esc, "esc"}, {ScriptVerb::Close, "close"}, {ScriptVerb::Timer, "timer"}, {ScriptVerb::Wait, "wait"},
    {ScriptVerb::Toggle, "toggle"}, {ScriptVerb::Focus, "focus"}, {ScriptVerb::Print, "print"},
}};

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view TrimView(std::string_view text) {
    while (!text.empty() && (IsBlank(text.front()) || text.front() == '\r')) text.remove_prefix(1);
    while (!text.empty() && (IsBlank(text.back()) || text.back() == '\r')) text.remove_suffix(1);
    return text;
}

// The next word, blanks before it skipped; `rest` is what follows.
std::string_view NextWord(std::string_view& rest) {
    rest = TrimView(rest);
    size_t end = 0;
    while (end < rest.size() && !IsBlank(rest[end])) ++end;
    const std::string_view word = rest.substr(0, end);
    rest.remove_prefix(end);
    rest = TrimView(rest);
    return word;
}

std::optional<int> Number(std::string_view text) {
    int value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || end != text.data() + text.size() || value < 0) return std::nullopt;
    return value;
}

ScriptCommand Wrong(std::string error) {
    ScriptCommand command;
    command.error = std::move(error);
    return command;
}

// "Name", "Name 2" or "Name(2)"; what is left over must be empty.
bool ReadControl(std::string_view target, ScriptCommand& command) {
    target = TrimView(target);
    if (target.empty()) {
        command.error = clsScriptCommand::Word(command.verb) + " needs a control name";
        return false;
    }
    const size_t paren = target.find('(');
    if (paren != std::string_view::npos) {
        const auto number = target.back() == ')' ? Number(TrimView(target.substr(paren + 1, target.size() - paren - 2)))
                                                 : std::nullopt;
        if (paren == 0 || !number) {
            command.error = "\"" + std::string(target) + "\" is no control: write Name(2) or Name 2";
            return false;
        }
        command.control = std::string(TrimView(target.substr(0, paren)));
        command.index = *number;
        return true;
    }
    std::string_view rest = target;
    command.control = std::string(NextWord(rest));
    if (rest.empty()) return true;
    const std::string_view indexWord = NextWord(rest);
    const auto number = Number(indexWord);
    if (!number) {
        command.error = "\"" + std::string(indexWord) + "\" is no index of " + command.control + " (a number from 0)";
        return false;
    }
    if (!rest.empty()) {
        command.error = "unexpected \"" + std::string(rest) + "\" after " + command.control + " " + std::string(indexWord);
        return false;
    }
    command.index = *number;
    return true;
}

std::string ReadText(std::string_view text) {
    text = TrimView(text);
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') return std::string(text.substr(1, text.size() - 2));
    return std::string(text);
}

} // namespace

std::string clsScriptCommand::Word(ScriptVerb verb) {
    for (const auto& [v, word] : kVerbs) {
        if (v == verb) return word;
    }
    return "";
}

int clsScriptCommand::MatchLine(const std::vector<std::string>& items, std::string_view line) {
    if (const auto number = Number(line)) return *number < static_cast<int>(items.size()) ? *number : -1;
    const auto find = [&](const auto& fits) {
        const auto it = std::find_if(items.begin(), items.end(), fits);
        return it == items.end() ? -1 : static_cast<int>(it - items.begin());
    };
    int found = find([&](const std::string& item) { return item == line; });
    if (found < 0) found = find([&](const std::string& item) { return clsString::EqualNoCaseAscii(item, line); });
    if (found < 0) {
        found = find([&](const std::string& item) {
            return item.size() >= line.size() && clsString::EqualNoCaseAscii(std::string_view(item).substr(0, line.size()), line);
        });
    }
    return found;
}

ScriptCommand clsScriptCommand::Parse(std::string_view line) {
    if (line.substr(0, 3) == "\xEF\xBB\xBF") line.remove_prefix(3);   // a byte-order mark from a Windows editor
    std::string_view rest = TrimView(line);
    if (rest.empty() || rest.front() == '#') return {};
    const std::string_view word = NextWord(rest);
    ScriptCommand command;
    for (const auto& [verb, name] : kVerbs) {
        if (clsString::EqualNoCaseAscii(word, name)) command.verb = verb;
    }
    switch (command.verb) {
    case ScriptVerb::None:
        return Wrong("unknown action \"" + std::string(word) +
                     "\" (click, choose, tick, untick, type, select, enter, esc, close, timer, wait, toggle, focus, print)");
    case ScriptVerb::Click:
    case ScriptVerb::Choose:
    case ScriptVerb::Tick:
    case ScriptVerb::Untick:
        if (!ReadControl(rest, command)) return Wrong(command.error);
        return command;
    case ScriptVerb::Type:
    case ScriptVerb::Select: {
        const bool type = command.verb == ScriptVerb::Type;
        const size_t equals = rest.find('=');
        if (equals == std::string_view::npos) {
            return Wrong(type ? "type needs \"= text\": type NameText = Jane Doe"
                              : "select needs \"= line\": select SetupTypeList = 1 or = Typical");
        }
        if (!ReadControl(rest.substr(0, equals), command)) return Wrong(command.error);
        command.text = ReadText(rest.substr(equals + 1));
        if (!type && command.text.empty()) return Wrong("select needs a line after \"=\": its number from 0 or its text");
        return command;
    }
    case ScriptVerb::Toggle:
    case ScriptVerb::Focus:
        command.text = ReadText(rest);
        if (command.text.empty()) return Wrong(std::string(word) + " needs a line of the tree: its product code or its text");
        return command;
    case ScriptVerb::Enter:
    case ScriptVerb::Esc:
    case ScriptVerb::Close:
    case ScriptVerb::Print:
        if (!rest.empty()) return Wrong(std::string(word) + " takes nothing after it");
        return command;
    case ScriptVerb::Timer: {
        command.text = std::string(NextWord(rest));
        if (!rest.empty()) return Wrong("timer takes one timer name at most");
        return command;
    }
    case ScriptVerb::Wait: {
        if (rest.empty()) return command;
        if (clsString::EqualNoCaseAscii(rest, "end")) {
            command.untilLeft = true;
            return command;
        }
        const auto number = Number(rest);
        if (!number || *number < 1 || *number > kMaxWait) {
            return Wrong("wait takes a count from 1 to " + std::to_string(kMaxWait) + " or \"end\", not \"" + std::string(rest) + "\"");
        }
        command.count = *number;
        return command;
    }
    }
    return command;
}

} // namespace tovel
