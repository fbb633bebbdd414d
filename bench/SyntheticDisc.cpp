#include "bench/SyntheticDisc.h"

#include <cstdio>

#include "platform/clsPlatform.h"
#include "settings/clsRegistry.h"

namespace tovel::bench {

namespace {

constexpr const char* kMakerKey = "HKEY_LOCAL_MACHINE\\SOFTWARE\\SynthMaker";

struct Language {
    const char* letter;
    const char* section;
    const char* product;     ///< "Product" in the language (ANSI, code page 1252)
    const char* interrupted; ///< the first line of the break message
};

// Texts in the code page the files are read in: the Western languages carry their accents
// as bytes of 1252, the Japanese section is never read from the file on a Western Windows.
constexpr Language kLanguages[] = {
    {"A", "German", "Produkt", "Die Installation wurde abgebrochen. \xDC" "berpr\xFC" "fen Sie die Einstellungen."},
    {"B", "English", "Product", "The installation was interrupted. Check the settings."},
    {"C", "French", "Produit", "L'installation a \xE9t\xE9 interrompue. V\xE9rifiez les param\xE8tres."},
    {"D", "Spanish", "Producto", "La instalaci\xF3n se ha interrumpido. Compruebe la configuraci\xF3n."},
    {"E", "Italian", "Prodotto", "L'installazione \xE8 stata interrotta. Verificare le impostazioni."},
    {"J", "Japanese", "Seihin", "Insutoru ga chuudan saremashita."},
};

std::string Line(const std::string& key, const std::string& value) { return key + "=" + value + "\r\n"; }

std::string Number(int n) { return std::to_string(n); }

std::string LanguageSection(const Language& language, int i, const std::string& code) {
    const std::string name = std::string(language.product) + " " + Number(i);
    std::string text = std::string("[") + language.section + "]\r\n";
    text += Line("Description", name);
    text += Line("LongDescription", name + ": " + language.product + " " + code +
                                        " with its drivers, its configuration tool and the online help, " +
                                        "for the stations of one plant.");
    text += Line("AlternativeDescription", std::string(language.product) + " " + code);
    text += Line("SetupDiscID", "DISC1");
    text += Line("BreakMessage1", language.interrupted);
    text += Line("BreakMessage2", code);
    text += Line("BreakMessage3", "Setup.log");
    text += Line("Tooltip", name + " (" + code + ")");
    text += Line("SetupFile", "Setup\\Setup.exe");
    text += Line("SetupFileParameters", "/s /lang=" + std::string(language.letter) + " /log=\"%TempFolder%\\" + code + ".log\"");
    text += Line("ShowReadMe", std::string("Readme_") + language.section + ".txt");
    text += Line("DiskSpaceDestDrv", Number(20 + i % 300));
    text += Line("StartOnBegin1", "%SystemFolder%\\net.exe");
    text += Line("ParaStartOnBegin1", "stop SynthService" + Number(i % 7));
    text += Line("StartOnBegin2", "Tools\\Prepare.exe");
    text += Line("ParaStartOnBegin2", "/quiet");
    text += Line("NotStartOnEndProgram1", "Viewer.exe");
    text += Line("NotStartOnEndProgram2", "Monitor.exe");
    text += Line("WaitForApplicationTitle1", "*" + code + "*");
    text += Line("DefaultPathCriterium1", "WinNT");
    text += Line("DefaultPathCriterium1Path", "%ProgramPath%SynthMaker\\" + code);
    text += Line("DeinstallRegPath1_1", std::string(kMakerKey) + "\\" + code);
    text += Line("DeinstallRegKey1_1", "Package");
    text += Line("DeinstallExpectedValue1_1", "Standard");
    return text + "\r\n";
}

} // namespace

std::string SyntheticProductCode(int i) {
    char code[16];
    std::snprintf(code, sizeof code, "SYN%05d", i);
    return code;
}

std::string SyntheticProductFile(int i, int products) {
    const std::string code = SyntheticProductCode(i);
    const std::string key = std::string(kMakerKey) + "\\" + code;
    std::string text = "; " + code + ": description file of a synthetic product\r\n[GENERAL]\r\n";
    text += Line("FileType", "ssf");
    text += Line("ProductCode", code);
    text += Line("Build", "3.0." + Number(i % 10));
    text += Line("SSFVersion", "5.2");
    text += Line("TSInstallVersion", "5.2.1");
    text += Line("AlwaysInstall", i % 50 == 0 ? "True" : "False");
    text += Line("AutoDeinstall", i % 2 == 0 ? "1" : "0");
    text += Line("DefaultPath", "%ProgramPath%SynthMaker\\" + code);
    text += Line("DefaultPathRegPath", key);
    text += Line("DefaultPathRegKey", "InstallPath");
    text += Line("DeinstallKey", "{" + code + "-0000-1111-2222-333344445555}");
    text += Line("DeinstallParam", "");
    text += Line("DeinstallParam1", "/x {" + code + "-0000-1111-2222-333344445555} /qb");
    text += Line("EstimatedTime", Number(30 + i % 90));
    text += Line("HideInstall", "False");
    text += Line("IsCriticalComponent", i % 10 == 0 ? "Yes" : "No");
    text += Line("RegisterInRunOnce", "1");
    text += Line("SetupMode", i % 3 == 0 ? "msi" : "exe");
    text += Line("ShowDialogWait", "True");
    text += Line("DontChangeExistPath", "False");
    text += Line("TermToInstall", "OS;registry;" + std::string(kMakerKey) + "\\Base\\Version;regsz;=>;1.0;disableduncheckbox;uncheckbox");
    text += Line("ShowDriveSelectionInComponentDialog", "True");
    text += Line("Visible", "True");
    text += Line("DiskSpaceDestDrv", "25");
    text += "\r\n[LANGUAGES]\r\n";
    for (const auto& language : kLanguages) text += Line(std::string("Language") + language.letter, language.section);
    text += Line("LanguageX", "English");
    text += "\r\n";
    for (const auto& language : kLanguages) text += LanguageSection(language, i, code);

    text += "[DEPENDENCIES]\r\n";
    int dependence = 1;
    if (i + 1 < products) text += Line("Dependence" + Number(dependence++), SyntheticProductCode(i + 1));
    if (i % 5 == 0 && i + 3 < products) text += Line("Dependence" + Number(dependence++), SyntheticProductCode(i + 3));
    text += "\r\n[SETUP_DEPENDENCIES]\r\n";
    if (i + 1 < products) {
        text += Line("Type1", "force");
        text += Line("ProductCode1", SyntheticProductCode(i + 1));
        text += Line("ProductCode1AdditionalRequirement1", SyntheticProductCode((i + 2) % products));
        text += Line("Type2", "recommend");
        text += Line("ProductCode2", SyntheticProductCode((i + 7) % products));
    }
    text += "\r\n[PRODUCTTYP]\r\n";
    text += Line("VelmarProduct", "True");
    text += Line("LogFile", "%TempFolder%\\" + code + ".log");

    text += "\r\n[VERSIONS]\r\n";
    text += Line("RegPath1", key);
    text += Line("RegKey1", "Version");
    text += Line("RegPath2", key + "\\Legacy");
    text += Line("RegKey2", "Version");
    text += Line("Version1", "1.0");
    text += Line("Version1Action1", "$ManualDeinstall$");
    text += Line("Version2", "2.0");
    text += Line("Version2Action1", "Tools\\Migrate.exe /from=2.0");
    text += Line("Version2Action2", "$TryUpdate$");
    text += Line("Version3", "2.5");
    text += Line("Version3Action1", "$Warning$");
    text += Line("DefaultAction1", "$DoNotInstall$");
    text += Line("FirstInstAction1", "Tools\\Prepare.exe /first");
    text += Line("FirstInstAction2", "$TryUpdate$");
    return text;
}

std::string SyntheticPacketFile(int p, int packets, int products) {
    const std::string code = "PKT" + Number(p);
    std::string text = "[GENERAL]\r\n";
    text += Line("FileType", "collection");
    text += Line("ProductCode", code);
    text += Line("ProfibusAction", "+" + SyntheticProductCode(p) + ",-" + SyntheticProductCode(p + 1));
    text += Line("EthernetAction", SyntheticProductCode(p + 2));
    text += Line("Ethernet2Action", "");
    text += Line("KWTAction", "");
    text += Line("NoBusAction", "-" + SyntheticProductCode(p));
    text += Line("Visible", "True");
    text += Line("PreSelect", p == 0 ? "checkbox" : "uncheckbox");
    // Each packet takes a slice of the products, the last one all that are left.
    const int slice = products / packets;
    const int end = p + 1 == packets ? products : (p + 1) * slice;
    for (int i = p * slice, n = 1; i < end; ++i, ++n) text += Line("ProductCode" + Number(n), SyntheticProductCode(i));
    text += "\r\n[LANGUAGES]\r\n";
    for (const auto& language : kLanguages) text += Line(std::string("Language") + language.letter, language.section);
    text += "\r\n";
    for (const auto& language : kLanguages) {
        text += std::string("[") + language.section + "]\r\n";
        text += Line("Description", "Setup type " + Number(p));
        text += Line("LongDescription", "The products of setup type " + Number(p));
        text += Line("AlternativeDescription", code);
        text += "\r\n";
    }
    text += "[DEPENDENCIES]\r\n";
    if (p + 1 < packets) text += Line("Dependence1", "PKT" + Number(p + 1));
    return text;
}

bool WriteSyntheticDisc(const std::string& root, int products, int packets, SyntheticDisc& disc, std::string& error) {
    auto& files = Platform().Files();
    disc = SyntheticDisc{};
    disc.root = root;
    disc.productFolder = root + "Products\\";
    const auto write = [&](const std::string& path, const std::string& bytes) {
        if (files.WriteFileAtomic(path, bytes)) return true;
        error = "cannot write " + path;
        return false;
    };
    const auto folder = [&](const std::string& path) {
        if (files.CreateFolder(path)) return true;
        error = "cannot create " + path;
        return false;
    };
    if (!folder(root) || !folder(disc.productFolder)) return false;
    if (!write(root + "Setups.ini", "[SETTINGS]\r\nPath=" + disc.productFolder + "\r\nDiscID=SYNTH\r\n")) return false;
    for (int i = 0; i < products; ++i) {
        const std::string code = SyntheticProductCode(i);
        const std::string path = disc.productFolder + code + "\\" + code + ".ssf";
        const std::string bytes = SyntheticProductFile(i, products);
        if (!folder(disc.productFolder + code) || !write(path, bytes)) return false;
        disc.files.push_back(path);
        disc.bytes += bytes.size();
    }
    const std::string packetFolder = disc.productFolder + "Packets\\";
    if (packets > 0 && !folder(packetFolder)) return false;
    for (int p = 0; p < packets; ++p) {
        const std::string path = packetFolder + "PKT" + Number(p) + ".ssf";
        const std::string bytes = SyntheticPacketFile(p, packets, products);
        if (!write(path, bytes)) return false;
        disc.files.push_back(path);
        disc.bytes += bytes.size();
    }

    // The machine: the base the condition terms ask for, and every third product installed,
    // in turn as a version the files list, a newer one and one they do not know.
    clsRegistry reg;
    if (!reg.InitWithRegPath(std::string(kMakerKey) + "\\Base") || !reg.SetKeyValue("Version", "2.1", RegType::Sz)) {
        error = "cannot write the registry";
        return false;
    }
    constexpr const char* kInstalled[] = {"2.0", "4.0", "2.2"};
    for (int i = 0; i < products; i += 3) {
        clsRegistry product;
        if (!product.InitWithRegPath(std::string(kMakerKey) + "\\" + SyntheticProductCode(i)) ||
            !product.SetKeyValue("Version", kInstalled[(i / 3) % 3], RegType::Sz) ||
            !product.SetKeyValue("InstallPath", "D:\\Plant\\" + SyntheticProductCode(i), RegType::Sz) ||
            !product.SetKeyValue("Package", "Standard", RegType::Sz)) {
            error = "cannot write the registry";
            return false;
        }
    }
    return true;
}

} // namespace tovel::bench
