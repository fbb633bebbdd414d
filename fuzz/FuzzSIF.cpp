// libFuzzer target for description files: any bytes written as a ".ssf" file on an emulated
// machine, read as a product (clsSIFApplicationItem::Read), as a packet (clsSIFPacketItem::Read)
// and through the search of a product folder holding just that file. The machine is made once
// for the run; reading only reads it, so every input meets the same machine. The input's
// length picks the setup language (0..5, and 6 for an index outside), so every way to the
// language section is taken. Besides not crashing, the readers must keep what the rest of
// the setup relies on:
//   - every numbered list has as many entries as its count, none of them empty, and nothing
//     outside 1..count;
//   - no value is longer than the reader's buffer, and none holds a line break (values are
//     lines), except the break message, which is three values joined by CR LF;
//   - check-box states are one of the four codes, and the selected flag follows the state;
//   - the offered languages are letters of "ABCDEJ" in that order;
//   - a packet's code is in upper case, its bus actions name codes without separators;
//   - reading again gives the same record;
//   - the search finds the one file and files it in the list its FileType names, or none.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsSIFDetection.h"
#include "catalogue/clsSSFSearch.h"
#include "common/clsString.h"
#include "platform/clsPlatform.h"
#include "fuzz/FuzzMachine.h"
#include "settings/clsIniFile.h"
#include "settings/clsIniText.h"
#include "settings/clsPlaceholder.h"
#include "settings/clsRegistry.h"
#include "settings/clsSetupsIni.h"
#include "startup/Globals.h"

using namespace tovel;
using namespace tovel::fuzz;

namespace {

constexpr const char* kDisc = "C:\\Disc\\";
constexpr const char* kProducts = "C:\\Disc\\Products\\";
constexpr const char* kFile = "C:\\Disc\\Products\\Fuzz.ssf";


// The description file as the host sees it: each input is written there directly, as a
// write through the machine syncs the disk and would be most of the run's time.
std::string& HostFile() {
    static std::string file;
    return file;
}

void ReleaseGlobals() {
    gApplications.RemoveAllItem();
    gPackets.RemoveAllItem();
    gPlaceholder.reset();
    gSetupsIni.reset();
}

// Characters, as the reader's buffer counts them (the text is UTF-8).
size_t Chars(std::string_view text) {
    size_t count = 0;
    for (char c : text) count += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
    return count;
}

void RequireValue(std::string_view value) {
    Require(Chars(value) <= clsIniText::kMaxValueChars);
    Require(value.find_first_of("\r\n") == std::string_view::npos);
}

// A path the reader made from a value: the description file's folder or the disc's root
// joined to the value (each at most the buffer).
void RequirePath(std::string_view path) {
    Require(path.find_first_of("\r\n") == std::string_view::npos);
    Require(Chars(path) <= 2 * clsIniText::kMaxValueChars + 260);
}

bool IsStateCode(int32_t state) {
    return state == CheckBoxState::kChecked || state == CheckBoxState::kUnchecked ||
           state == CheckBoxState::kCheckedLocked || state == CheckBoxState::kUncheckedLocked;
}

template <typename Get>
void RequireList(int count, Get get) {
    Require(count >= 0);
    for (int i = 1; i <= count; ++i) {
        const std::string value = get(i);
        Require(!value.empty());
        RequireValue(value);
    }
    Require(get(0).empty());
    Require(get(count + 1).empty());
}

void CheckProduct(const clsSIFApplicationItem& item) {
    Require(item.SIFFileName == kFile);
    for (const std::string* value : {&item.ProductCode, &item.Build, &item.DefaultPathRegKey, &item.DefaultPathRegPath,
                                     &item.DeinstallKey, &item.DeinstallParam, &item.FileType, &item.TSInstallVersion,
                                     &item.SetupMode, &item.TermToInstall, &item.SSFVersion, &item.Description,
                                     &item.LongDescription, &item.AlternativeDescription, &item.SetupDiscID,
                                     &item.Tooltip, &item.SetupFileParameters, &item.LogFile, &item.DependenceTerm}) {
        RequireValue(*value);
    }
    RequirePath(item.SetupFile);
    RequirePath(item.ShowReadMe);
    // Three values joined by CR LF: exactly two line breaks of its own.
    const std::string& message = item.BreakMessage;
    const size_t first = message.find("\r\n");
    Require(first != std::string::npos);
    const size_t second = message.find("\r\n", first + 2);
    Require(second != std::string::npos && message.find("\r\n", second + 2) == std::string::npos);

    size_t next = 0;
    for (char letter : item.AvailableLanguages) {
        const size_t at = std::string_view("ABCDEJ").find(letter, next);
        Require(at != std::string_view::npos);
        next = at + 1;
    }
    Require(IsStateCode(item.CheckBox));
    Require(item.Selected == CheckBoxIsChecked(item.CheckBox));
    if (item.AlwaysInstall && item.TermToInstallOutcome.holds) Require(item.CheckBox == CheckBoxState::kCheckedLocked);
    if (item.TermToInstall.empty()) Require(item.TermToInstallOutcome.holds && item.TermToInstallOutcome.errorEntries.empty());
    Require(IsStateCode(item.DependenceTypeOtherTrueCheckBox));
    Require(item.SetupDiscNumber >= 1);

    RequireList(item.DependenceCount(), [&](int i) { return item.GetDependence(i); });
    RequireList(item.SetupDependenceCount(), [&](int i) { return item.GetSetupDependence(i); });
    for (int i = 1; i <= item.SetupDependenceCount(); ++i) {
        const int16_t type = item.GetSetupDependenceType(i);
        Require(type >= 0 && type <= 6);
        const std::string requirements = item.GetSetupDependenceAR(i);
        Require(requirements.empty() || requirements.back() == '~');
    }
    RequireList(item.StartOnBeginCount(), [&](int i) { return item.GetStartOnBeginProgram(i); });
    for (int i = 1; i <= item.StartOnBeginCount(); ++i) RequireValue(item.GetStartOnBeginParameter(i));
    RequireList(item.NotStartOnEndProgramsCount(), [&](int i) { return item.GetNotStartOnEndProgram(i); });
    RequireList(item.ApplicationTitleCount(), [&](int i) { return item.GetApplicationTitle(i); });
    RequireList(item.DefaultPathCriteriumCount(), [&](int i) { return item.GetDefaultPathCriterium(i); });
    RequireList(item.VersionActionsCount(), [&](int i) { return item.GetAction(i); });
    RequireList(item.FirstInstActionsCount(), [&](int i) { return item.GetFirstInstAction(i); });
    Require(!item.DeinstallEntryMatches(0) && !item.DeinstallEntryMatches(item.DeinstallEntryCount() + 1));
}

bool SameProduct(const clsSIFApplicationItem& a, const clsSIFApplicationItem& b) {
    return a.ProductCode == b.ProductCode && a.Description == b.Description && a.SetupFile == b.SetupFile &&
           a.DefaultPath == b.DefaultPath && a.CheckBox == b.CheckBox && a.Dependencies() == b.Dependencies() &&
           a.SetupDependenceCount() == b.SetupDependenceCount() && a.StartOnBeginCount() == b.StartOnBeginCount() &&
           a.VersionActionsCount() == b.VersionActionsCount() && a.FirstInstActionsCount() == b.FirstInstActionsCount() &&
           a.InstalledVersion == b.InstalledVersion && a.AvailableLanguages == b.AvailableLanguages &&
           a.DeinstallEntryCount() == b.DeinstallEntryCount();
}

void CheckPacket(const clsSIFPacketItem& packet) {
    Require(packet.SIFFileName == kFile);
    Require(packet.ProductCode == clsString::UpperAscii(packet.ProductCode));
    for (const std::string* value : {&packet.ProductCode, &packet.Description, &packet.LongDescription,
                                     &packet.AlternativeDescription, &packet.PreSelectText, &packet.RegPath,
                                     &packet.RegKey, &packet.RegValue}) {
        RequireValue(*value);
    }
    Require(IsStateCode(packet.PreSelect));
    Require(packet.Selected == CheckBoxIsChecked(packet.PreSelect));
    RequireList(packet.Count(), [&](int i) { return packet.ProdCode(i); });
    RequireList(packet.DependenceCount(), [&](int i) { return packet.GetDependence(i); });
    for (int bus = 0; bus < kBusSystemCount; ++bus) {
        for (const auto& action : packet.BusActions(static_cast<BusSystem>(bus))) {
            Require(!action.productCode.empty());
            Require(action.productCode.find_first_of(",;") == std::string::npos);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    BeforeRemoval() = ReleaseGlobals;
    clsMachinePlatform& platform = InstallFuzzMachine("sif");
    HostFile() = platform.Machine().HostPath(kFile).value_or("");
    Require(!HostFile().empty());

    auto& files = Platform().Files();
    Require(files.CreateFolder(kDisc) && files.CreateFolder(kProducts) && files.WriteFileAtomic(kFile, ""));
    Require(files.WriteFileAtomic(std::string(kDisc) + "Setups.ini", std::string("[SETTINGS]\r\nPath=") + kProducts + "\r\n"));
    // The log stays off: a run writes millions of lines, and what is logged is the tests' matter.
    gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, kDisc);
    gPlaceholder = std::make_unique<clsPlaceholder>();
    gPlaceholder->SetSettings(gSetupsIni.get());
    // What reports of bad input are, they must be a line.
    clsIniFile::SetReporter([](const std::string& message) { Require(!message.empty()); });

    // Values the dictionary's terms, versions sections and removal tests ask for.
    const std::string key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Fuzz";
    SetValue(key, "Version", "2.0", RegType::Sz);
    SetValue(key, "InstallPath", "D:\\Plant", RegType::Sz);
    SetValue(key, "Package", "Standard", RegType::Sz);
    SetValue(key, "Count", "10", RegType::Dword);
    SetValue(key + "\\Old", "Version", "1.0.0.12", RegType::Sz);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    {
        std::ofstream out(HostFile(), std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        Require(out.good());
    }
    DefaultLanguage = static_cast<int16_t>(size % 7);

    const clsSIFDetection detection(gPlaceholder.get());
    clsSIFApplicationItem product;
    product.Read(kFile, kProducts);
    detection.Detect(product);
    CheckProduct(product);
    // Detecting twice on the same machine changes nothing.
    clsSIFApplicationItem again;
    again.Read(kFile, kProducts);
    detection.Detect(again);
    detection.Detect(again);
    Require(SameProduct(product, again));

    clsSIFPacketItem packet;
    packet.Read(kFile);
    CheckPacket(packet);

    clsIniFile ini;
    ini.SetFullPath(kFile);
    ini.SetSectionName("GENERAL");
    const std::string type = clsString::LowerAscii(ini.GetString("FileType", ""));
    Require(clsSSFSearch().Run());
    Require(gApplications.Count() == (type == "ssf" ? 1 : 0));
    Require(gPackets.Count() == (type == "collection" ? 1 : 0));
    if (type == "ssf") Require(SameProduct(*gApplications.Item(1), product));
    if (type == "collection") Require(gPackets.Item(1)->ProductCode == packet.ProductCode);
    return 0;
}
