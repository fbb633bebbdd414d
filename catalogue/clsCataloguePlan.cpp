#include "catalogue/clsCataloguePlan.h"

#include <sstream>

#include "common/clsString.h"

namespace tovel {

namespace {

constexpr const char* kBusNames[kBusSystemCount] = {"PROFIBUS", "Ethernet", "Ethernet 2", "KWT", "no bus"};

std::string Joined(const std::vector<std::string>& parts, const char* separator = ", ") {
    std::string text;
    for (const auto& part : parts) text += (text.empty() ? "" : separator) + part;
    return text;
}

std::string StateText(int32_t code, bool selected) {
    std::string word(CheckBoxStateText(code));
    if (word.empty()) word = "state " + std::to_string(code);
    return word + (selected ? ", selected" : ", not selected");
}

std::string TermText(const char* key, const std::string& term, const TermOutcome& outcome) {
    std::string text = std::string(key) + " " + term + "\n      ";
    if (!outcome.registryPath.empty()) {
        text += outcome.registryPath + (outcome.valueExisted ? " = \"" + outcome.valueRead + "\"" : " is not there") + "; ";
    }
    text += outcome.holds ? "the term holds" : "the term fails, giving " + std::string(CheckBoxStateText(outcome.stateWhenFalse));
    // A failing comparison is logged as well; only a term that holds in spite of an entry was wrongly written.
    if (outcome.holds && !outcome.errorEntries.empty()) text += " (wrongly written; see the log)";
    return text;
}

void Product(std::ostream& out, int number, const clsSIFApplicationItem& item, const clsSIFPacket& packets) {
    out << "\n" << number << ". " << item.ProductCode << "  " << item.Description << (item.Build.empty() ? "" : "  " + item.Build) << "\n";
    out << "   file        " << item.SIFFileName << "\n";
    out << "   setup       " << item.SetupFile << (item.SetupFileParameters.empty() ? "" : " " + item.SetupFileParameters);
    if (item.SetupDiscNumber != 1) out << "   (disc " << item.SetupDiscNumber << ": " << item.DiscRelativeSetupFile << ")";
    out << "\n   destination " << (item.DefaultPath.empty() ? "-" : item.DefaultPath)
        << (item.RegDefaultDestPath.empty() ? "" : " (found in the registry)") << ", " << item.DiskSpaceDestDrv << " MB";
    out << "\n   languages   " << (item.AvailableLanguages.empty() ? "-" : item.AvailableLanguages) << ", texts from [" << item.ProdInfoSection << "]\n";
    std::string why = item.AlwaysInstall ? "AlwaysInstall" : "";
    if (!item.TermToInstall.empty()) why += (why.empty() ? "" : "; ") + TermText("TermToInstall", item.TermToInstall, item.TermToInstallOutcome);
    out << "   check box   " << StateText(item.CheckBox, item.Selected) << "  -- " << (why.empty() ? "no condition" : why) << "\n";
    if (!item.Visible || item.HideInstall) out << "   shown       " << (item.Visible ? "" : "not visible ") << (item.HideInstall ? "installed hidden" : "") << "\n";
    if (item.DependenceCount() > 0) out << "   after       " << Joined(item.Dependencies()) << "\n";
    for (const auto& link : item.SetupDependencies()) {
        out << "   link        " << (link.type == DependenceType::Other ? item.DependenceTypeOther : std::string(DependenceTypeText(link.type)))
            << " " << link.productCode;
        if (!link.additionalRequirements.empty()) out << " with " << link.additionalRequirements;
        out << "\n";
    }
    if (!item.DependenceTerm.empty()) out << "   links if    " << TermText("DependenceTerm", item.DependenceTerm, item.DependenceTermOutcome) << "\n";
    const auto& v = item.Versions;
    out << "   installed   " << (v.installedVersion.empty() ? "none found" : v.installedVersion + " at " + v.foundAt);
    if (!v.versionsSection.empty()) out << "  [" << v.versionsSection << "]";
    out << "\n";
    if (!v.reason.empty()) out << "   because     " << v.reason << "\n";
    std::vector<std::string> actions;
    for (int i = 1; i <= item.VersionActionsCount(); ++i) actions.push_back(item.GetAction(i));
    std::vector<std::string> first;
    for (int i = 1; i <= item.FirstInstActionsCount(); ++i) first.push_back(item.GetFirstInstAction(i));
    if (!actions.empty()) out << "   actions     " << Joined(actions, " | ") << "\n";
    if (!first.empty()) out << "   first inst. " << Joined(first, " | ") << "\n";
    std::vector<std::string> in;
    for (const auto& packet : packets.Items()) {
        for (const auto& code : packet.ProductCodes()) {
            if (clsString::EqualNoCaseAscii(code, item.ProductCode)) {
                in.push_back(packet.ProductCode);
                break;
            }
        }
    }
    out << "   packets     " << (in.empty() ? "-" : Joined(in)) << "\n";
}

void Packet(std::ostream& out, const clsSIFPacketItem& packet) {
    out << "\n" << packet.ProductCode << "  " << packet.Description << (packet.Visible ? "" : "  (not shown)") << "\n";
    out << "   preselect   " << StateText(packet.PreSelect, packet.Selected) << "  -- " << packet.PreSelectReason << "\n";
    out << "   products    " << Joined(packet.ProductCodes()) << "\n";
    if (packet.DependenceCount() > 0) out << "   after       " << Joined(packet.Dependencies()) << "\n";
    for (int bus = 0; bus < kBusSystemCount; ++bus) {
        const std::string& text = packet.BusActionText(static_cast<BusSystem>(bus));
        if (!text.empty()) out << "   bus " << kBusNames[bus] << ": " << text << "\n";
    }
}

} // namespace

std::string clsCataloguePlan::Text(const clsSIFApplication& applications, const clsSIFPacket& packets, const std::string& productFolder) {
    std::ostringstream out;
    out << "Catalogue of " << productFolder << ": " << applications.Count() << " products, " << packets.Count() << " packets\n";
    out << "\nProducts in installation order\n==============================\n";
    for (int i = 1; i <= applications.Count(); ++i) Product(out, i, *applications.Item(i), packets);
    out << "\nPackets in order\n================\n";
    for (const auto& packet : packets.Items()) Packet(out, packet);
    return out.str();
}

} // namespace tovel
