// What reading INI files through clsIniFile costs next to reading their bytes, on a fresh
// emulated machine: 1,000 product files of 60 keys, read as the catalogue reads them (a new
// object per file), then again through objects that are kept (answers from memory, one Stat
// per read), and one file of 100,000 sections. Each figure is the median of a few passes; the
// ratios compare passes of the same run, so they hold across machines where times do not.
//
//   tovel_bench_ini [files] [passes]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "bench/BenchMachine.h"
#include "bench/BenchTiming.h"
#include "settings/clsIniFile.h"

using namespace tovel;
using namespace tovel::bench;

namespace {

constexpr int kKeys = 60;

std::string FileName(int i) {
    char name[32];
    std::snprintf(name, sizeof name, "C:\\Bench\\P%04d.ini", i);
    return name;
}

std::string KeyName(int k) { return "Key" + std::to_string(k); }

std::string ProductFile(int i) {
    std::string text = "; product " + std::to_string(i) + "\r\n[Product]\r\n";
    for (int k = 0; k < kKeys; ++k) text += KeyName(k) + "=Value " + std::to_string(k) + " of product " + std::to_string(i) + "\r\n";
    return text;
}


} // namespace

int main(int argc, char** argv) {
    const int files = argc > 1 ? std::max(1, std::atoi(argv[1])) : 1000;
    const int passes = argc > 2 ? std::max(1, std::atoi(argv[2])) : 3;
    std::string host, error;
    if (!InstallFreshMachine("ini", host, error)) {
        std::fprintf(stderr, "tovel_bench_ini: %s\n", error.c_str());
        return 1;
    }
    clsIniFile::SetReporter([](const std::string& message) { std::fprintf(stderr, "tovel_bench_ini: %s\n", message.c_str()); });
    auto& disk = Platform().Files();
    if (!disk.CreateFolder("C:\\Bench")) return 1;
    for (int i = 0; i < files; ++i) {
        if (!disk.WriteFileAtomic(FileName(i), ProductFile(i))) return 1;
    }
    std::string many;
    for (int i = 0; i < 100000; ++i) many += "[S" + std::to_string(i) + "]\r\nk=" + std::to_string(i) + "\r\n";
    if (!disk.WriteFileAtomic("C:\\Bench\\Many.ini", many)) return 1;
    WaitTillSettled();

    size_t sink = 0;
    auto readBytes = [&] {
        for (int i = 0; i < files; ++i) sink += disk.ReadFile(FileName(i)).value_or("").size();
    };
    auto readKeys = [&](clsIniFile& ini) {
        for (int k = 0; k < kKeys; ++k) sink += ini.GetString(KeyName(k), "").size();
    };
    auto newObjects = [&] {
        for (int i = 0; i < files; ++i) {
            clsIniFile ini;
            ini.SetFullPath(FileName(i));
            ini.SetSectionName("Product");
            readKeys(ini);
        }
    };
    std::vector<clsIniFile> kept(static_cast<size_t>(files));
    for (int i = 0; i < files; ++i) {
        kept[static_cast<size_t>(i)].SetFullPath(FileName(i));
        kept[static_cast<size_t>(i)].SetSectionName("Product");
        readKeys(kept[static_cast<size_t>(i)]);
    }
    auto keptObjects = [&] {
        for (auto& ini : kept) readKeys(ini);
    };
    auto statsOnly = [&] {
        for (int i = 0; i < files; ++i) {
            for (int k = 0; k < kKeys; ++k) sink += disk.Stat(FileName(i)) ? 1 : 0;
        }
    };

    // clsIniText alone on bytes already in memory: what reading costs without the file system.
    std::vector<std::string> contents;
    for (int i = 0; i < files; ++i) contents.push_back(disk.ReadFile(FileName(i)).value_or(""));
    auto parseOnly = [&] {
        std::vector<std::string> warnings;
        for (const auto& content : contents) {
            const auto text = clsIniText::Parse(content, 1252, warnings);
            for (int k = 0; k < kKeys; ++k) sink += text.Value("Product", KeyName(k)).value_or("").size();
        }
    };

    std::vector<double> bytes, fresh, cached, parsed;
    for (int p = 0; p < passes; ++p) {
        bytes.push_back(Seconds(readBytes));
        fresh.push_back(Seconds(newObjects));
        cached.push_back(Seconds(keptObjects));
        parsed.push_back(Seconds(parseOnly));
    }
    const double stats = Seconds(statsOnly);   // once: it only explains (c)
    const double a = Median(bytes);
    std::printf("%d files of %d keys, median of %d passes (ratio against (a)):\n", files, kKeys, passes);
    Row("(a) ReadFile of each file", a, a, files, "file");
    Row("(b) all keys, a new clsIniFile per file", Median(fresh), a, files, "file");
    Row("(c) all keys again, objects kept (from memory)", Median(cached), a, files, "file");
    Row("    of which: one Stat per key read (one pass)", stats, a, files, "file");
    Row("(d) parse and all keys from bytes in memory", Median(parsed), a, files, "file");
    std::printf("  (b)/(a) = %.2f\n", Median(fresh) / a);

    std::vector<double> manyBytes, manyParse, manyList;
    for (int p = 0; p < passes; ++p) {
        manyBytes.push_back(Seconds([&] { sink += disk.ReadFile("C:\\Bench\\Many.ini").value_or("").size(); }));
        manyParse.push_back(Seconds([&] {
            clsIniFile ini;
            ini.SetFullPath("C:\\Bench\\Many.ini");
            ini.SetSectionName("S99999");
            sink += ini.GetString("k", "").size();
        }));
        manyList.push_back(Seconds([&] {
            clsIniFile ini;
            ini.SetFullPath("C:\\Bench\\Many.ini");
            sink += ini.GetSectionsEx().size();
        }));
    }
    const double m = Median(manyBytes);
    std::printf("one file of 100,000 sections (%zu bytes):\n", many.size());
    Row("(a) ReadFile", m, m, 1, "file");
    Row("(b) new clsIniFile, key of the last section", Median(manyParse), m, 1, "file");
    Row("(c) new clsIniFile, GetSectionsEx", Median(manyList), m, 1, "file");

    kept.clear();
    InstallPlatform(nullptr).reset();
    std::filesystem::remove_all(host);
    return sink == 0 ? 1 : 0;
}
