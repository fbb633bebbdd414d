#include "install/clsDumpCatalogue.h"

#include <variant>

#include "catalogue/clsSIFApplication.h"
#include "catalogue/clsSIFApplicationItem.h"
#include "catalogue/clsSIFPacketItem.h"
#include "settings/clsIniFile.h"
#include "startup/RunState.h"

namespace tovel {
namespace {

constexpr const char* kPacketSection = "InstallPacketItem";
constexpr const char* kApplicationSection = "SIFApplication";

using Item = clsSIFApplicationItem;
using Packet = clsSIFPacketItem;

/// A value kept in a record that is no field of its own.
template <typename Record>
struct Computed {
    std::string (*get)(const Record&);
    bool (*set)(Record&, const std::string&);
};

/// A key and the record's value it holds.
template <typename Record>
struct FieldKey {
    const char* name;
    std::variant<std::string Record::*, bool Record::*, int32_t Record::*, Computed<Record>> field;
};

template <typename Record>
struct FieldText {
    const Record& record;
    std::string operator()(std::string Record::*field) const { return record.*field; }
    std::string operator()(bool Record::*field) const { return record.*field ? "True" : "False"; }
    std::string operator()(int32_t Record::*field) const { return std::to_string(record.*field); }
    std::string operator()(const Computed<Record>& value) const { return value.get(record); }
};

template <typename Record>
struct FieldRestore {
    Record& record;
    const std::string& text;
    bool operator()(std::string Record::*field) const {
        record.*field = text;
        return true;
    }
    bool operator()(bool Record::*field) const {
        const auto value = clsIniFile::ParseBoolean(text);
        if (value) record.*field = *value;
        return value.has_value();
    }
    bool operator()(int32_t Record::*field) const {
        const auto value = StoredNumber(text);
        if (value) record.*field = *value;
        return value.has_value();
    }
    bool operator()(const Computed<Record>& value) const { return value.set(record, text); }
};

// The packet's dependencies share one key, joined by ",".
std::string JoinDependencies(const Packet& packet) {
    std::string joined;
    for (const auto& code : packet.Dependencies()) joined += (joined.empty() ? "" : ",") + code;
    return joined;
}

bool SplitDependencies(Packet& packet, const std::string& joined) {
    for (size_t begin = 0; begin < joined.size();) {
        const size_t end = std::min(joined.find(',', begin), joined.size());
        packet.AddDependence(joined.substr(begin, end - begin));
        begin = end + 1;
    }
    return true;
}

const FieldKey<Packet> kPacketFields[] = {
    {"ProductCode", &Packet::ProductCode},
    {"Description", &Packet::Description},
    {"LongDescript", &Packet::LongDescription},
    {"AlternativeDescription", &Packet::AlternativeDescription},
    {"Dependence", Computed<Packet>{JoinDependencies, SplitDependencies}},
    {"Selected", &Packet::Selected},
};

const FieldKey<Item> kFields[] = {
    {"SIFFileName", &Item::SIFFileName},
    {"ProductCode", &Item::ProductCode},
    {"Build", &Item::Build},
    {"Description", &Item::Description},
    {"LongDescript", &Item::LongDescription},
    {"AlternativeDescription", &Item::AlternativeDescription},
    {"AutoDeinstall", &Item::AutoDeinstall},
    {"DeinstallName", &Item::DeinstallName},
    {"DeinstallKey", &Item::DeinstallKey},
    {"DeinstallParam", &Item::DeinstallParam},
    {"DisplayName", &Item::DisplayName},
    {"VelmarProduct", &Item::VelmarProduct},
    {"LogFile", &Item::LogFile},
    {"InstStatusSection", &Item::InstStatusSection},
    {"InstStatus", &Item::InstStatus},
    {"SetupDiscID", &Item::SetupDiscID},
    {"SetupFile", &Item::SetupFile},
    {"SetupFileParameters", &Item::SetupFileParameters},
    {"ReadMePath", &Item::ShowReadMe},
    {"DestDrvSpace", &Item::DiskSpaceDestDrv},
    {"AvailableLanguages", &Item::AvailableLanguages},
    {"DestDrvSpace_A", &Item::DestDrvSpace_A},
    {"DestDrvSpace_B", &Item::DestDrvSpace_B},
    {"DestDrvSpace_C", &Item::DestDrvSpace_C},
    {"DestDrvSpace_D", &Item::DestDrvSpace_D},
    {"DestDrvSpace_E", &Item::DestDrvSpace_E},
    {"isCriticalComponent", &Item::IsCriticalComponent},
    {"Visible", &Item::Visible},
    {"AlwaysInstall", &Item::AlwaysInstall},
    {"HideInstall", &Item::HideInstall},
    {"EstimatedTime", &Item::EstimatedTime},
    {"UserName", &Item::UserName},
    {"CompanyName", &Item::CompanyName},
    {"SetupMode", &Item::SetupMode},
    {"RegisterInRunOnce", &Item::RegisterInRunOnce},
    {"DestDrive", &Item::DestDrive},
    {"DestPath", &Item::DestPath},
    {"RegDefaultDestPath", &Item::RegDefaultDestPath},
    {"DataDrive", &Item::DataDrive},
    {"Languages", &Item::Languages},
    {"Selected", &Item::Selected},
    {"InstallationComment", &Item::InstallationComment},
    {"InstalledVersion", &Item::InstalledVersion},
    {"TSInstallVersion", &Item::TSInstallVersion},
};
// The last key of a product: a file that has it for the last product was written to the end.
const FieldKey<Item> kLastFields[] = {
    {"ShowDialogWait", &Item::ShowDialogWait},
};

/// Where a list's count stands: with the product's fields, or before or after its entries.
enum class CountAt : uint8_t { WithFields, BeforeEntries, AfterEntries };

/// A list of a product: its count key and, for each entry, the names of its values.
struct ListKey {
    const char* countKey;
    std::vector<const char*> names;
    CountAt countAt;
    int (*count)(const Item&);
    std::string (*get)(const Item&, int entry, size_t value);
    bool (*add)(Item&, const std::vector<std::string>& values);
};

bool AddSetupDependence(Item& item, const std::vector<std::string>& values) {
    const auto type = StoredNumber(values[1]);
    if (!type || *type < 0 || *type > static_cast<int32_t>(DependenceType::Other)) return false;
    item.AddSetupDependence(values[0], static_cast<DependenceType>(*type), values[2]);
    return true;
}

const std::vector<ListKey>& Lists() {
    static const std::vector<ListKey> lists{
        {"DependenciesCount", {"Dependencies"}, CountAt::AfterEntries,
         [](const Item& item) { return item.DependenceCount(); },
         [](const Item& item, int j, size_t) { return item.GetDependence(j); },
         [](Item& item, const std::vector<std::string>& v) { item.AddDependence(v[0]); return true; }},
        {"StartOnBeginCount", {"getStartOnBeginProgram", "getStartOnBeginParameter"}, CountAt::WithFields,
         [](const Item& item) { return item.StartOnBeginCount; },
         [](const Item& item, int j, size_t k) {
             return k == 0 ? item.GetStartOnBeginProgram(j) : item.GetStartOnBeginParameter(j);
         },
         [](Item& item, const std::vector<std::string>& v) { item.AddStartOnBegin(v[0], v[1]); return true; }},
        {"SetupDependenciesCount", {"getSetupDependence", "getSetupDependenceType", "getSetupDependenceAllAR"},
         CountAt::BeforeEntries, [](const Item& item) { return item.SetupDependenceCount(); },
         [](const Item& item, int j, size_t k) {
             return k == 0   ? item.GetSetupDependence(j)
                    : k == 1 ? std::to_string(item.GetSetupDependenceType(j))
                             : item.GetSetupDependenceAR(j);
         },
         AddSetupDependence},
        {"VersionActionsCount", {"getAction"}, CountAt::BeforeEntries,
         [](const Item& item) { return static_cast<int>(item.VersionActionsCount()); },
         [](const Item& item, int j, size_t) { return item.GetAction(j); },
         [](Item& item, const std::vector<std::string>& v) { item.AddAction(v[0]); return true; }},
        {"ApplicationTitlesCount", {"getApplicationTitle"}, CountAt::BeforeEntries,
         [](const Item& item) { return item.ApplicationTitleCount(); },
         [](const Item& item, int j, size_t) { return item.GetApplicationTitle(j); },
         [](Item& item, const std::vector<std::string>& v) { item.AddApplicationTitle(v[0]); return true; }},
        {"NotStartOnEndProgramsCount", {"GetNotStartOnEndProgram"}, CountAt::BeforeEntries,
         [](const Item& item) { return item.NotStartOnEndProgramsCount; },
         [](const Item& item, int j, size_t) { return item.GetNotStartOnEndProgram(j); },
         [](Item& item, const std::vector<std::string>& v) { item.AddNotStartOnEndProgram(v[0]); return true; }},
        {"FirstInstActionsCount", {"getFirstInstAction"}, CountAt::BeforeEntries,
         [](const Item& item) { return static_cast<int>(item.FirstInstActionsCount()); },
         [](const Item& item, int j, size_t) { return item.GetFirstInstAction(j); },
         [](Item& item, const std::vector<std::string>& v) { item.AddFirstinstAction(v[0]); return true; }},
    };
    return lists;
}

template <typename Record, size_t N>
void WriteFields(const Record& record, const FieldKey<Record> (&fields)[N], const std::string& section,
                 const std::string& number, const clsDumpCatalogue::KeySink& put) {
    for (const auto& key : fields) put(section, key.name + number, std::visit(FieldText<Record>{record}, key.field));
}

void WriteList(const Item& item, const ListKey& list, const std::string& number, const clsDumpCatalogue::KeySink& put) {
    const int count = list.count(item);
    const std::string countText = std::to_string(count);
    if (list.countAt == CountAt::BeforeEntries) put(kApplicationSection, list.countKey + number, countText);
    for (int j = 1; j <= count; ++j) {
        const std::string entry = number + "\\" + std::to_string(j);
        for (size_t k = 0; k < list.names.size(); ++k) put(kApplicationSection, list.names[k] + entry, list.get(item, j, k));
    }
    if (list.countAt == CountAt::AfterEntries) put(kApplicationSection, list.countKey + number, countText);
}

void WriteApplication(const Item& item, int index, const clsDumpCatalogue::KeySink& put) {
    const std::string number = std::to_string(index);
    WriteFields(item, kFields, kApplicationSection, number, put);
    for (const auto& list : Lists()) {
        if (list.countAt == CountAt::WithFields) put(kApplicationSection, list.countKey + number, std::to_string(list.count(item)));
    }
    for (const auto& list : Lists()) WriteList(item, list, number, put);
    WriteFields(item, kLastFields, kApplicationSection, number, put);
}

/// Reads keys of one section and keeps the first that is missing or unreadable.
class Reader {
public:
    Reader(const clsDumpCatalogue::KeySource& get, const char* section) : get_(get), section_(section) {}

    std::optional<std::string> Get(const std::string& key) {
        auto value = get_(section_, key);
        if (!value) Fail(key, "missing");
        return value;
    }
    /// A count: a number of 0 or more.
    std::optional<int> Count(const std::string& key) {
        const auto text = Get(key);
        const auto number = text ? StoredNumber(*text) : std::nullopt;
        if (text && (!number || *number < 0)) Fail(key, "not a count");
        return number && *number >= 0 ? number : std::nullopt;
    }
    template <typename Record, size_t N>
    bool Fields(Record& record, const FieldKey<Record> (&fields)[N], const std::string& number) {
        for (const auto& key : fields) {
            const auto text = Get(key.name + number);
            if (!text) return false;
            if (!std::visit(FieldRestore<Record>{record, *text}, key.field)) return Fail(key.name + number, "unreadable");
        }
        return true;
    }
    bool Fail(const std::string& key, const char* what) {
        if (problem_.empty()) problem_ = std::string(section_) + " " + key + " " + what;
        return false;
    }
    [[nodiscard]] const std::string& Problem() const { return problem_; }

private:
    const clsDumpCatalogue::KeySource& get_;
    const char* section_;
    std::string problem_;
};

bool ReadList(Reader& reader, Item& item, const ListKey& list, const std::string& number) {
    const auto count = reader.Count(list.countKey + number);
    if (!count) return false;
    std::vector<std::string> values(list.names.size());
    for (int j = 1; j <= *count; ++j) {
        const std::string entry = number + "\\" + std::to_string(j);
        for (size_t k = 0; k < list.names.size(); ++k) {
            auto value = reader.Get(list.names[k] + entry);
            if (!value) return false;
            values[k] = std::move(*value);
        }
        if (!list.add(item, values)) return reader.Fail(list.names[0] + entry, "unreadable");
    }
    return true;
}

bool ReadApplication(Reader& reader, Item& item, int index) {
    const std::string number = std::to_string(index);
    if (!reader.Fields(item, kFields, number)) return false;
    for (const auto& list : Lists()) {
        if (!ReadList(reader, item, list, number)) return false;
    }
    return reader.Fields(item, kLastFields, number);
}

} // namespace

void clsDumpCatalogue::WritePacket(const clsSIFPacketItem& packet, const KeySink& put) {
    WriteFields(packet, kPacketFields, kPacketSection, "", put);
    put(kPacketSection, "ProductCount", std::to_string(packet.Count()));
    for (int i = 1; i <= packet.Count(); ++i) put(kPacketSection, "ProductCode" + std::to_string(i), packet.ProdCode(i));
}

void clsDumpCatalogue::WriteApplications(const clsSIFApplication& applications, const KeySink& put) {
    put(kApplicationSection, "Count", std::to_string(applications.Count()));
    for (int i = 1; i <= applications.Count(); ++i) WriteApplication(*applications.Item(i), i, put);
}

bool clsDumpCatalogue::ReadPacket(const KeySource& get, clsSIFPacketItem& packet, std::string& problem) {
    Reader reader(get, kPacketSection);
    clsSIFPacketItem read;
    bool complete = reader.Fields(read, kPacketFields, "");
    const auto count = complete ? reader.Count("ProductCount") : std::nullopt;
    complete = complete && count;
    for (int i = 1; complete && i <= count.value_or(0); ++i) {
        const auto code = reader.Get("ProductCode" + std::to_string(i));
        if (code) read.Add(*code);
        complete = code.has_value();
    }
    problem = reader.Problem();
    if (complete) packet = std::move(read);
    return complete;
}

bool clsDumpCatalogue::ReadApplications(const KeySource& get, std::vector<clsSIFApplicationItem>& items,
                                        std::string& problem) {
    Reader reader(get, kApplicationSection);
    std::vector<clsSIFApplicationItem> read;
    const auto count = reader.Count("Count");
    bool complete = count.has_value();
    for (int i = 1; complete && i <= count.value_or(0); ++i) {
        complete = ReadApplication(reader, read.emplace_back(), i);
    }
    // A count cut short by damage would leave products behind it unread.
    if (complete && get(kApplicationSection, "SIFFileName" + std::to_string(*count + 1))) {
        complete = reader.Fail("Count", "smaller than the products in the file");
    }
    problem = reader.Problem();
    if (complete) items = std::move(read);
    return complete;
}

} // namespace tovel
