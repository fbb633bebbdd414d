// What the search of the catalogue costs next to reading the bytes of the same files, on a
// fresh emulated machine, and what ordering a large catalogue costs next to copying it.
//
//   (a) list the disc's folders and read every description file through Platform().Files()
//   (b) clsSSFSearch::Run: find, read as products and packets, order both lists
//   (c) SortItemsDependencies on 10,000 records built in memory, against copying them
//   (d) what `tovelsetup --check` does: clsDiscCheck::Run on the disc
//   (e) what `tovelsetup --plan` does: the search, then the catalogue and the steps as text
//
// The peak memory of (a), (d) and (e) is each measured in a child process that does the work
// once (getrusage of the child, ru_maxrss); it includes the few MB the benchmark holds when
// it forks, which (a)'s child shows on its own.
//
// The log is off (no CreateLogFile in Setups.ini), so its lines cost nothing and (b) measures
// the catalogue alone. Each figure is the median of a few passes; the ratios compare passes of
// the same run, so they hold across machines where times do not. (a), (d) and (e) are also
// timed in processor time of the process, which a machine busy with other work disturbs less
// than the clock on the wall.
//
//   tovel_bench_catalogue [products] [passes] [ordered]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "bench/SyntheticDisc.h"
#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsCataloguePlan.h"
#include "catalogue/clsDiscCheck.h"
#include "install/clsInstallPlan.h"
#include "catalogue/clsSSFSearch.h"
#include "bench/BenchMachine.h"
#include "bench/BenchTiming.h"
#include "settings/clsIniFile.h"
#include "settings/clsPlaceholder.h"
#include "settings/clsSetupsIni.h"
#include "startup/Globals.h"

using namespace tovel;
using namespace tovel::bench;

namespace {

constexpr int kPackets = 8;


// Every file below a folder, read as bytes: what any reader of the disc must at least do.
size_t ReadTree(const std::string& folder) {
    auto& files = Platform().Files();
    size_t bytes = 0;
    for (const auto& entry : files.ListFolder(folder)) {
        if (entry.isFolder) {
            bytes += ReadTree(folder + entry.name + "\\");
        } else {
            bytes += files.ReadFile(folder + entry.name).value_or("").size();
        }
    }
    return bytes;
}

// A catalogue of n records in the worst order: record i depends on record i+1.
std::vector<clsSIFApplicationItem> ChainInReverse(int n) {
    std::vector<clsSIFApplicationItem> records(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        auto& record = records[static_cast<size_t>(i)];
        record.ProductCode = bench::SyntheticProductCode(i);
        record.Description = "Product " + std::to_string(i);
        record.SetupFile = "D:\\Products\\" + record.ProductCode + "\\Setup\\Setup.exe";
        if (i + 1 < n) record.AddDependence(bench::SyntheticProductCode(i + 1));
        if (i % 5 == 0 && i + 3 < n) record.AddDependence(bench::SyntheticProductCode(i + 3));
    }
    return records;
}

// The order the dependencies demand: the last record first.
bool Reversed(const std::vector<clsSIFApplicationItem>& items, int n) {
    if (static_cast<int>(items.size()) != n) return false;
    for (int i = 0; i < n; ++i) {
        if (items[static_cast<size_t>(i)].ProductCode != bench::SyntheticProductCode(n - 1 - i)) return false;
    }
    return true;
}

// The disc checked as `--check` checks it; the number of findings.
size_t Check(const std::string& root) { return clsDiscCheck::Run(root).size(); }

// The plan as `--plan` prints it; its length.
size_t Plan() {
    clsSSFSearch().Run();
    return clsCataloguePlan::Text(gApplications, gPackets, clsSSFSearch::ProductFolder()).size() +
           clsInstallPlan::Text(gApplications).size();
}

// The peak resident size in MB of a child process that does the work once; -1 when the child
// could not be made or failed.
double PeakMegabytes(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child < 0) return -1;
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) return -1;
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

int Fail(const std::string& message) {
    std::fprintf(stderr, "tovel_bench_catalogue: %s\n", message.c_str());
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    const int products = argc > 1 ? std::max(1, std::atoi(argv[1])) : 1000;
    const int passes = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
    const int ordered = argc > 3 ? std::max(1, std::atoi(argv[3])) : 10000;
    std::string host, error;
    if (!InstallFreshMachine("catalogue", host, error)) return Fail(error);
    clsIniFile::SetReporter([](const std::string& message) { std::fprintf(stderr, "tovel_bench_catalogue: %s\n", message.c_str()); });

    bench::SyntheticDisc disc;
    if (!bench::WriteSyntheticDisc("C:\\Disc\\", products, kPackets, disc, error)) return Fail(error);
    // The globals the search reads: the product folder from Setups.ini (no CreateLogFile, so
    // the log is off), placeholders for DefaultPath, English as the setup language.
    gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, disc.root);
    if (gSetupsIni->CreateLogFile()) return Fail("the log must be off");
    gPlaceholder = std::make_unique<clsPlaceholder>();
    gPlaceholder->SetSettings(gSetupsIni.get());
    DefaultLanguage = 1;
    WaitTillSettled();

    size_t sink = 0;
    // Before the benchmark holds the files' bytes and the catalogue, so each child starts small.
    const double bytesPeak = PeakMegabytes([&] { sink += ReadTree(disc.productFolder); });
    const double checkPeak = PeakMegabytes([&] { sink += Check(disc.root); });
    const double planPeak = PeakMegabytes([&] { sink += Plan(); });
    std::vector<std::string> contents;
    for (const auto& file : disc.files) contents.push_back(Platform().Files().ReadFile(file).value_or(""));
    const uint32_t codePage = Platform().System().AnsiCodePage();
    std::vector<double> bytes, search, found, parsed, order, check, plan;
    std::vector<double> bytesCpu, checkCpu, planCpu;
    size_t findings = 0;
    for (int p = 0; p < passes; ++p) {
        Time([&] { sink += ReadTree(disc.productFolder); }, bytes, bytesCpu);
        search.push_back(Seconds([&] { sink += clsSSFSearch().Run() ? 1 : 0; }));
        Time([&] { findings = Check(disc.root); }, check, checkCpu);
        Time([&] { sink += Plan(); }, plan, planCpu);
        // Where (b) spends its time: the folder walk alone, parsing the files, ordering.
        found.push_back(Seconds([&] {
            bool stopped = false;
            sink += clsSSFSearch::FindSSFFiles(disc.productFolder, {}, stopped).size();
        }));
        parsed.push_back(Seconds([&] {
            std::vector<std::string> warnings;
            for (const auto& content : contents) sink += clsIniText::Parse(content, codePage, warnings).SectionNames().size();
        }));
        auto apps = gApplications.Items();
        std::reverse(apps.begin(), apps.end());   // back into the order the search found them
        clsSIFApplication copy;
        clsSIFPacket noPackets;
        copy.Items() = std::move(apps);
        clsSIFCommonSection common(copy, noPackets);
        order.push_back(Seconds([&] { common.SortItemsDependencies(0); }));
    }
    if (!Reversed(gApplications.Items(), products)) return Fail("the search did not order the products");
    if (gPackets.Count() != kPackets || gPackets.Item(1)->ProductCode != "PKT" + std::to_string(kPackets - 1)) {
        return Fail("the search did not read and order the packets");
    }
    const double a = Median(bytes);
    const int files = static_cast<int>(disc.files.size());
    std::printf("a disc of %d products and %d packets, %zu bytes of description files, median of %d passes:\n",
                products, kPackets, disc.bytes, passes);
    Row("(a) list the folders, ReadFile of each file", a, a, files, "file");
    Row("(b) clsSSFSearch::Run: find, read, order (log off)", Median(search), a, files, "file");
    Row("    of which: finding the files", Median(found), a, files, "file");
    Row("    of which: parsing their bytes (clsIniText, from memory)", Median(parsed), a, files, "file");
    Row("    of which: ordering the products", Median(order), a, files, "file");
    std::printf("  (b)/(a) = %.2f\n", Median(search) / a);
    Row("(d) --check: clsDiscCheck::Run", Median(check), a, files, "file");
    Row("(e) --plan: search, catalogue and steps as text", Median(plan), a, files, "file");
    std::printf("  (d)/(a) = %.2f, (e)/(a) = %.2f; %zu findings\n", Median(check) / a, Median(plan) / a, findings);
    const double aCpu = Median(bytesCpu);
    std::printf("  in processor time: (a) %.2f ms, (d)/(a) = %.2f, (e)/(a) = %.2f\n", aCpu * 1e3, Median(checkCpu) / aCpu,
                Median(planCpu) / aCpu);
    std::printf("  peak memory (ru_maxrss of a child doing it once): (a) %.1f MB, (d) %.1f MB, (e) %.1f MB\n", bytesPeak,
                checkPeak, planPeak);

    // (c) A large catalogue in memory, ordered; copying the records is the baseline.
    const auto records = ChainInReverse(ordered);
    std::vector<double> copying, sorting;
    bool right = true;
    for (int p = 0; p < passes; ++p) {
        clsSIFApplication apps;
        clsSIFPacket noPackets;
        clsSIFCommonSection common(apps, noPackets);
        copying.push_back(Seconds([&] { apps.Items() = records; }));
        sorting.push_back(Seconds([&] { common.SortItemsDependencies(0); }));
        right = right && Reversed(apps.Items(), ordered);
    }
    if (!right) return Fail("the records were not ordered");
    const double copy = Median(copying);
    std::printf("%d records in memory, each depending on the next, median of %d passes:\n", ordered, passes);
    Row("(c0) copy the records", copy, copy, ordered, "record");
    Row("(c) SortItemsDependencies", Median(sorting), copy, ordered, "record");

    gApplications.RemoveAllItem();
    gPackets.RemoveAllItem();
    gPlaceholder.reset();
    gSetupsIni.reset();
    InstallPlatform(nullptr).reset();
    std::filesystem::remove_all(host);
    return sink == 0 ? 1 : 0;
}
