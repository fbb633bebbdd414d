// What saving and restoring the installation state costs next to writing and reading the
// same bytes, on a fresh emulated machine with the catalogue of a synthetic disc:
//
//   (a) WriteFileAtomic of the state file's bytes, then ReadFile of them
//   (b) clsDumpFile::CreateDumpFile: build the file in one pass, write it atomically
//   (c) clsDumpFile::ReadDumpFile: read, parse, check and rebuild every record
//
// The log is off, so its lines cost nothing. Each figure is the median of a few passes; the
// ratios compare passes of the same run, so they hold across machines where times do not.
//
//   tovel_bench_dumpfile [products] [passes]
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/BenchCatalogue.h"
#include "bench/BenchTiming.h"
#include "catalogue/CatalogueGlobals.h"
#include "install/clsDumpFile.h"
#include "startup/Globals.h"

using namespace tovel;
using namespace tovel::bench;

namespace {

constexpr int kPackets = 8;

int Fail(const std::string& message) {
    std::fprintf(stderr, "tovel_bench_dumpfile: %s\n", message.c_str());
    return 1;
}

// What the run adds to the records before it saves them: destinations, a user, a status.
void AsTheRunLeavesThem(clsSIFApplication& apps) {
    for (auto& item : apps.Items()) {
        item.DestDrive = "C:";
        item.DestPath = "C:\\Program Files\\Tovel\\" + item.ProductCode;
        item.DataDrive = "D:";
        item.UserName = "Operator";
        item.CompanyName = "Plant 4";
        item.Languages = "AB";
        item.InstStatus = "done";
    }
    for (int i = 1; i <= apps.Count(); ++i) gPacketItem.Add(apps.Item(i)->ProductCode);
}

} // namespace

int main(int argc, char** argv) {
    const int products = argc > 1 ? std::max(1, std::atoi(argv[1])) : 1000;
    const int passes = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
    std::string host, error;
    if (!LoadSyntheticCatalogue("dumpfile", products, kPackets, host, error)) return Fail(error);
    AsTheRunLeavesThem(gApplications);

    clsDumpFile dump;
    dump.SetSetupStatus(-1073741819);
    dump.CreateDumpFile();
    const std::string bytes = Platform().Files().ReadFile(clsDumpFile::DumpFilePath()).value_or("");
    if (bytes.empty()) return Fail("no state file written");

    size_t sink = 0;
    const uint32_t codePage = Platform().System().AnsiCodePage();
    std::vector<double> plain, create, read, parse;
    for (int p = 0; p < passes; ++p) {
        plain.push_back(Seconds([&] {
            sink += Platform().Files().WriteFileAtomic("C:\\PLAIN.TMP", bytes) ? 1 : 0;
            sink += Platform().Files().ReadFile("C:\\PLAIN.TMP").value_or("").size();
        }));
        create.push_back(Seconds([&] { dump.CreateDumpFile(); }));
        clsSIFApplication apps;
        clsSIFPacketItem packet;
        clsDumpFile restore(apps, packet);
        read.push_back(Seconds([&] { sink += restore.ReadDumpFile() ? 1 : 0; }));
        parse.push_back(Seconds([&] {
            std::vector<std::string> warnings;
            sink += clsIniText::Parse(bytes, codePage, warnings).HasSection("Info") ? 1 : 0;
        }));
        if (apps.Count() != products || restore.SetupStatus() != -1073741819) return Fail("the state did not read back");
    }
    const double a = Median(plain);
    std::printf("the state of %d products, %zu bytes, median of %d passes (%zu):\n", products, bytes.size(), passes, sink);
    Row("(a) WriteFileAtomic + ReadFile of the same bytes", a, a, products, "product");
    Row("(b) CreateDumpFile", Median(create), a, products, "product");
    Row("(c) ReadDumpFile into fresh objects", Median(read), a, products, "product");
    Row("    of which: parsing the bytes (clsIniText)", Median(parse), a, products, "product");
    std::printf("  ((b)+(c))/(a) = %.2f\n", (Median(create) + Median(read)) / a);
    std::filesystem::remove_all(host);
    return 0;
}
