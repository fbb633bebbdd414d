#include "settings/clsIniWriter.h"

#include "platform/clsUtf8.h"
#include "settings/clsIniText.h"

namespace tovel {

bool clsIniWriter::Put(std::string_view section, std::string_view key, std::string_view value, std::string& error) {
    error = clsIniText::WriteRefusal(section, key, value);
    if (!error.empty()) return false;
    const std::string_view sectionName = clsIniText::Trim(section);
    const std::string_view keyName = clsIniText::Trim(key);
    if (sectionName != current_ && !StartSection(sectionName, error)) return false;
    if (!Writable(keyName)) {
        error = "the key name cannot be written in code page " + std::to_string(codePage_);
        return false;
    }
    Append(keyName);
    bytes_ += '=';
    Append(value);
    bytes_ += "\r\n";
    return true;
}

void clsIniWriter::Append(std::string_view text) {
    // Most of a state file is ASCII, which every ANSI code page holds as it is.
    if (clsUtf8::IsAscii(text)) bytes_ += text;
    else bytes_ += clsIniText::AnsiBytes(text, codePage_);
}

bool clsIniWriter::Writable(std::string_view name) const {
    if (clsUtf8::IsAscii(name)) return true;
    return clsIniText::AnsiText(clsIniText::AnsiBytes(name, codePage_), codePage_) == name;
}

bool clsIniWriter::StartSection(std::string_view name, std::string& error) {
    const std::string folded = clsIniText::FoldName(name);
    if (!current_.empty() && folded == clsIniText::FoldName(current_)) return true;   // the same, in other case
    if (closed_.contains(folded)) {
        error = "the section [" + std::string(name) + "] was closed before";
        return false;
    }
    if (!Writable(name)) {
        error = "the section name cannot be written in code page " + std::to_string(codePage_);
        return false;
    }
    if (!current_.empty()) closed_.insert(clsIniText::FoldName(current_));
    current_ = std::string(name);
    bytes_ += clsIniText::AnsiBytes("[" + current_ + "]", codePage_);
    bytes_ += "\r\n";
    return true;
}

} // namespace tovel
