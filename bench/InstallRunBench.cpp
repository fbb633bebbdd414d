// What one tick of the installation run costs when it only walks its list: a synthetic disc's
// products, none selected, so every tick skips one product and no setup runs. Figures are the
// process's CPU time (std::clock) on a fresh emulated machine, the log off:
//
//   (a) clsInstallPlan::Make of the whole list, per product: the baseline
//   (b) the run's ticks from the first to the Done page, per tick
//
// Each figure is the median of a few passes; the ratio compares passes of the same run.
//
//   tovel_bench_installrun [products] [passes]
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "bench/BenchCatalogue.h"
#include "bench/BenchTiming.h"
#include "catalogue/CatalogueGlobals.h"
#include "install/clsInstallContext.h"
#include "install/clsInstallRun.h"
#include "startup/Globals.h"

using namespace tovel;
using namespace tovel::bench;

namespace {

constexpr int kPackets = 8;

int Fail(const std::string& message) {
    std::fprintf(stderr, "tovel_bench_installrun: %s\n", message.c_str());
    return 1;
}

// The page's part is a few label texts; the benchmark keeps only what the run asks for.
class CountingView : public clsInstallView {
public:
    void ShowProductStatus(int, const std::string& text) override { bytes += text.size(); }
    void MarkRunning(int line) override { bytes += static_cast<size_t>(line); }
    void ShowProgress(int done, int) override { bytes += static_cast<size_t>(done); }
    void ShowEndControls() override {}
    void LeavePage() override { ++left; }
    void ClosePage() override {}
    size_t bytes = 0;
    int left = 0;
};

double CpuSeconds(const std::function<void()>& pass) {
    const std::clock_t start = std::clock();
    pass();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

} // namespace

int main(int argc, char** argv) {
    const int products = argc > 1 ? std::max(1, std::atoi(argv[1])) : 1000;
    const int passes = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
    std::string host, error;
    if (!LoadSyntheticCatalogue("installrun", products, kPackets, host, error)) return Fail(error);
    std::vector<std::string> codes;
    for (auto& item : gApplications.Items()) {
        item.Selected = false;
        codes.push_back(item.ProductCode);
    }
    const InstallContext context = clsInstallContext::Current("B");

    std::vector<double> plan, ticks;
    int tickCount = 0;
    CountingView view;
    for (int p = 0; p < passes; ++p) {
        std::vector<InstallStep> steps;
        plan.push_back(CpuSeconds([&] { steps = clsInstallPlan::Make(gApplications, codes, context); }));
        clsInstallRun run(view, std::move(steps), gApplications);
        tickCount = 0;
        ticks.push_back(CpuSeconds([&] {
            while (run.Tick()) ++tickCount;
            ++tickCount;
        }));
        if (!run.Complete()) return Fail("the run did not complete");
    }
    if (view.left != passes) return Fail("the run did not leave the page");
    const double a = Median(plan);
    std::printf("a run of %d products, none selected: %d ticks, CPU time, median of %d passes (%zu):\n", products,
                tickCount, passes, view.bytes);
    Row("(a) clsInstallPlan::Make of the list", a, a, products, "product");
    Row("(b) the run's ticks to the Done page", Median(ticks), a, tickCount, "tick");
    std::printf("  per tick / per planned product = %.2f\n", (Median(ticks) / tickCount) / (a / products));
    std::filesystem::remove_all(host);
    return 0;
}
