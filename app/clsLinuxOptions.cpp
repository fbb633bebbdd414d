#include "app/clsLinuxOptions.h"

#include <cstdlib>

namespace tovel {

namespace {

// "--name=value" or "--name value"; advances i past a separate value.
std::optional<std::string> ValueOf(const std::vector<std::string>& args, size_t& i, const std::string& name) {
    const std::string& arg = args[i];
    if (arg.rfind(name + "=", 0) == 0) return arg.substr(name.size() + 1);
    if (arg == name && i + 1 < args.size()) return args[++i];
    return std::nullopt;
}

} // namespace

std::optional<LinuxOptions> clsLinuxOptions::Parse(const std::vector<std::string>& args, std::string& error) {
    LinuxOptions o;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--") {
            o.windowsArguments.insert(o.windowsArguments.end(), args.begin() + static_cast<long>(i) + 1, args.end());
            break;
        }
        if (arg.rfind("--", 0) != 0) {
            o.windowsArguments.push_back(arg);
            continue;
        }
        if (arg == "--boot") o.boot = true;
        else if (arg == "--profiles") o.profiles = true;
        else if (arg == "--plan") o.plan = true;
        else if (arg == "--check") o.check = true;
        else if (arg == "--help" || arg == "-h") o.help = true;
        else if (auto v = ValueOf(args, i, "--machine")) o.machine = *v;
        else if (auto v2 = ValueOf(args, i, "--create")) o.create = *v2;
        else if (auto v3 = ValueOf(args, i, "--disc")) o.disc = *v3;
        else if (auto share = ValueOf(args, i, "--disc-share")) {
            if (share->size() < 5 || share->rfind("\\\\", 0) != 0 || share->find('\\', 2) == std::string::npos) {
                error = "--disc-share needs a share name like \\\\server\\disc, not \"" + *share + "\"";
                return std::nullopt;
            }
            o.discShare = *share;
        }
        else if (auto format = ValueOf(args, i, "--format")) {
            if (*format != "json" && *format != "dot") {
                error = "--format is json or dot, not \"" + *format + "\"";
                return std::nullopt;
            }
            o.format = *format;
        }
        else if (auto v4 = ValueOf(args, i, "--disc-drive")) {
            const char c = v4->size() >= 1 ? static_cast<char>(std::toupper(static_cast<unsigned char>((*v4)[0]))) : 0;
            if (c < 'A' || c > 'Z' || (v4->size() > 1 && *v4 != std::string(1, (*v4)[0]) + ":")) {
                error = "--disc-drive needs a drive letter, not \"" + *v4 + "\"";
                return std::nullopt;
            }
            o.discDrive = c;
        } else {
            error = "unknown option " + arg + " (Windows switches begin with /; put -- before arguments that begin with --)";
            return std::nullopt;
        }
    }
    if (!o.format.empty() && !o.plan) {
        error = "--format=" + o.format + " belongs to --plan";
        return std::nullopt;
    }
    return o;
}

std::string clsLinuxOptions::DefaultMachineFolder() {
    if (const char* m = std::getenv("TOVEL_MACHINE"); m != nullptr && *m != 0) return m;
    if (const char* x = std::getenv("XDG_DATA_HOME"); x != nullptr && *x != 0) return std::string(x) + "/tovelsetup/machine";
    const char* home = std::getenv("HOME");
    return std::string(home != nullptr ? home : ".") + "/.local/share/tovelsetup/machine";
}

std::string clsLinuxOptions::Usage() {
    return "Usage: tovelsetup [options] [Windows switches]\n"
           "Runs the setup of a disc on an emulated Windows machine.\n\n"
           "  --machine=DIR        the machine folder (default: " + DefaultMachineFolder() + ")\n"
           "                       a missing machine is created: Windows XP Professional SP2, English\n"
           "  --create=SYS[,LANG]  create the machine from a profile instead (see --profiles)\n"
           "  --disc=DIR           put the disc folder DIR into the disc drive\n"
           "  --disc-drive=X       letter of the disc drive (default D)\n"
           "  --disc-share=\\\\S\\N  offer the disc as the network share \\\\S\\N and start the setup from there\n"
           "  --boot               switch the machine on after a restart: pending file renames, RunOnce\n"
           "  --profiles           list the systems and languages of --create\n"
           "  --plan               read the disc's catalogue on the machine and print it: the products in\n"
           "                       installation order with their check states, links, installed versions\n"
           "                       and actions, and the packets; then end without the wizard\n"
           "  --check              check the disc's files without running the setup: one finding per line,\n"
           "                       file:line: error|warning: text; exit status 0 clean, 1 warnings, 2 errors\n"
           "  --help               this text\n"
           "  --                   pass everything after it to the setup's command line\n\n"
           "Everything else is the setup's Windows command line, e.g. /log /nooscheck.\n";
}

} // namespace tovel
