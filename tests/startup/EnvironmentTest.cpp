// Checks of the machine on a fresh bed: the real Windows under Wine, the emulated machine on
// Linux. Both report what the bed says they are.
#include <gtest/gtest.h>

#include "common/mdlMessage.h"
#include "startup/clsCheckEnviroment.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel::test {
namespace {

constexpr const char* kSessionManager = "SYSTEM\\CurrentControlSet\\Control\\Session Manager";

class EnvironmentTest : public CatalogueFixture {
protected:
    void SetUp() override {
        CatalogueFixture::SetUp();
        savedSystemDir_ = SystemDir;
        ExitStatus = 0;
    }
    void TearDown() override {
        SystemDir = savedSystemDir_;
        ExitStatus = 0;
        SetMessageBoxHandler(nullptr);
        CatalogueFixture::TearDown();
    }
    bool Logged(const std::string& line) const { return LogText().find(line) != std::string::npos; }

    std::string savedSystemDir_;
};

TEST_F(EnvironmentTest, TheSystemVersionAndAPendingRestart) {
    clsCheckEnviroment environment;
    environment.ReadSystemVersion();
    EXPECT_EQ(environment.OSMajorVersion(), bed_->expectedVersion.major);
    EXPECT_EQ(environment.OSMinorVersion(), bed_->expectedVersion.minor);
    EXPECT_EQ(environment.OSPlatformId(), bed_->expectedVersion.platformId);
    EXPECT_EQ(environment.CSDVersion(), bed_->expectedVersion.csdVersion);
    EXPECT_EQ(OSPlatformId, 2);

    // The NT family: file renames left for the next start stop the setup.
    auto& registry = Platform().Registry();
    const auto pending = registry.QueryValue(RegRoot::LocalMachine, kSessionManager, "PendingFileRenameOperations");
    (void)registry.DeleteValue(RegRoot::LocalMachine, kSessionManager, "PendingFileRenameOperations");
    EXPECT_TRUE(environment.CheckPendingRestart(""));
    ASSERT_TRUE(registry.SetValue(RegRoot::LocalMachine, kSessionManager, "PendingFileRenameOperations",
                                  clsRegValue::MultiString({"\\??\\C:\\new.dll", "!\\??\\C:\\old.dll"})));
    std::string shown;
    SetMessageBoxHandler([&](const std::string& text, int, const std::string&) {
        shown = text;
        return mb::kIdOk;
    });
    EXPECT_FALSE(environment.CheckPendingRestart(""));
    EXPECT_EQ(shown, "Please restart Windows before installing new programs!");
    EXPECT_EQ(ExitStatus, 1603);
    EXPECT_TRUE(Logged("WinNT: Pending File Rename Operations. TOVEL_SETUP stopped."));
    (void)registry.DeleteValue(RegRoot::LocalMachine, kSessionManager, "PendingFileRenameOperations");
    if (pending) (void)registry.SetValue(RegRoot::LocalMachine, kSessionManager, "PendingFileRenameOperations", *pending);
}

TEST_F(EnvironmentTest, AFileIsCopiedToTheSystemFolderWhenMissingOrOlder) {
    using Result = clsCheckEnviroment::FileVersionResult;
    SystemDir = bed_->folder + "system32\\";
    ASSERT_TRUE(Platform().Files().CreateFolder(SystemDir));
    const std::string delivered = bed_->folder + "disc\\";
    ASSERT_TRUE(Platform().Files().CreateFolder(delivered));
    ASSERT_TRUE(Platform().Files().CopyFile(bed_->versionedFile, delivered + "runtime.dll", false));
    std::vector<std::string> replaced;
    const auto note = [&](const std::string& path) { replaced.push_back(path); };

    EXPECT_EQ(clsCheckEnviroment::CheckFileVersion("runtime.dll", delivered, note), Result::Copied);
    EXPECT_TRUE(Logged("runtime.dll does not exist in system directory."));
    EXPECT_TRUE(Logged("   Copy from: " + delivered + "runtime.dll to: " + SystemDir + "runtime.dll"));
    // The same version again: nothing to do.
    EXPECT_EQ(clsCheckEnviroment::CheckFileVersion("runtime.dll", delivered, note), Result::Current);
    EXPECT_TRUE(Logged("runtime.dll already exists in system directory."));
    EXPECT_TRUE(replaced.empty());
    // A file without a version counts as 0.0.0.0 and is replaced; the caller hears of it first.
    ASSERT_TRUE(Platform().Files().WriteFileAtomic(SystemDir + "runtime.dll", "no version\r\n"));
    EXPECT_EQ(clsCheckEnviroment::CheckFileVersion("runtime.dll", delivered, note), Result::Copied);
    EXPECT_TRUE(Logged("runtime.dll Version on System: 0.0.0.0"));
    EXPECT_TRUE(Logged("   ==> Version on system is too old!"));
    EXPECT_EQ(replaced, std::vector<std::string>{SystemDir + "runtime.dll"});
    // A delivered file without a version never replaces one.
    ASSERT_TRUE(Platform().Files().WriteFileAtomic(delivered + "runtime.dll", "no version\r\n"));
    EXPECT_EQ(clsCheckEnviroment::CheckFileVersion("runtime.dll", delivered), Result::Current);
}

} // namespace
} // namespace tovel::test
