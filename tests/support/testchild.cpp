// A program for process tests: sleeps, then ends with the exit code it was given.
// Arguments: <exit code> <milliseconds to sleep>.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

int main(int argc, char** argv) {
    const unsigned long code = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 0;
    const long sleepMs = argc > 2 ? std::strtol(argv[2], nullptr, 10) : 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(sleepMs));
    // An emulated machine takes exit codes beyond 8 bits from this file.
    if (const char* file = std::getenv("TOVEL_EXIT_CODE_FILE")) {
        if (FILE* f = std::fopen(file, "w")) {
            std::fprintf(f, "%lu\n", code);
            std::fclose(f);
        }
    }
    return static_cast<int>(code);  // the host keeps 8 bits of it; Windows all 32
}
