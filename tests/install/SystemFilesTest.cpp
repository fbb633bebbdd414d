// A disc's files for the system folder and the registration of its libraries, through the
// libraries' own entry points: a real DLL under Wine, a library line on the emulated machine.
#include <gtest/gtest.h>

#include "install/clsSystemFiles.h"
#include "install/clsUnRegister.h"
#include "startup/clsVersionInfo.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel::test {
namespace {

class SystemFilesTest : public CatalogueFixture {
protected:
    void SetUp() override {
        CatalogueFixture::SetUp();
        savedSystemDir_ = SystemDir;
        SystemDir = bed_->folder + "system32\\";
        ASSERT_TRUE(Platform().Files().CreateFolder(SystemDir));
    }
    void TearDown() override {
        SystemDir = savedSystemDir_;
        CatalogueFixture::TearDown();
    }

    void Copy(const std::string& from, const std::string& to) {
        ASSERT_TRUE(Platform().Files().CopyFile(from, to, false)) << from << " -> " << to;
    }
    /// The path the test library registered, or "(none)".
    static std::string Registered() {
        const auto value = Platform().Registry().QueryValue(RegRoot::CurrentUser, TestBed::kLibraryKey, "");
        return value ? value->text : "(none)";
    }
    bool Logged(const std::string& line) const { return LogText().find(line) != std::string::npos; }

    std::string savedSystemDir_;
};

TEST_F(SystemFilesTest, RegServerAndUnRegServerRunTheLibrarysOwnEntryPoints) {
    const std::string library = bed_->folder + "chart.ocx";
    Copy(bed_->registeringLibrary, library);
    EXPECT_TRUE(clsUnRegister::RegServer(library));
    EXPECT_TRUE(clsString::EqualNoCaseAscii(Registered(), library)) << Registered();
    EXPECT_TRUE(clsUnRegister::UnRegServer(library));
    EXPECT_EQ(Registered(), "(none)");
    EXPECT_TRUE(Logged("   DllRegisterServer " + library + " = 0x00000000"));
    EXPECT_TRUE(Logged("   DllUnregisterServer " + library + " = 0x00000000"));

    // A library without the entry points, a file that is no library, a missing file: nothing done.
    EXPECT_FALSE(clsUnRegister::RegServer(bed_->versionedFile));
    EXPECT_TRUE(Logged("   DllRegisterServer " + bed_->versionedFile + ": no entry point"));
    const std::string text = WriteFile("notes.dll", "not a library\r\n");
    EXPECT_FALSE(clsUnRegister::UnRegServer(text));
    EXPECT_TRUE(Logged("   DllUnregisterServer " + text + ": no library"));
    const size_t before = LogText().size();
    EXPECT_FALSE(clsUnRegister::RegServer(bed_->folder + "gone.ocx"));
    EXPECT_EQ(LogText().size(), before);
    EXPECT_EQ(Registered(), "(none)");
}

TEST_F(SystemFilesTest, TheDiscsSystemFilesAreBroughtUpToDateAndItsLibrariesRegistered) {
    const std::string disc = bed_->folder + "disc\\";
    const std::string delivered = disc + "System\\";
    WriteFile("disc\\System\\plain.txt", "delivered\r\n");
    WriteFile("disc\\System\\Sub\\ignored.txt", "a folder is not copied\r\n");
    for (const char* name : {"chart.ocx", "newer.dll", "old.ocx"}) Copy(bed_->registeringLibrary, delivered + name);
    WriteFile("disc\\System\\inuse.txt", "delivered\r\n");
    // On the system: an old.ocx without a version, a newer.dll of a higher version, and a
    // folder where inuse.txt would go, so that it cannot be copied.
    WriteFile("system32\\old.ocx", "an old library without a version\r\n");
    Copy(bed_->versionedFile, SystemDir + "newer.dll");
    ASSERT_TRUE(Platform().Files().CreateFolder(SystemDir + "inuse.txt"));

    clsSystemFiles::Install(disc);

    EXPECT_TRUE(Logged("System files from " + delivered));
    EXPECT_EQ(Platform().Files().ReadFile(SystemDir + "plain.txt").value_or(""), "delivered\r\n");
    EXPECT_FALSE(Platform().Files().FileExists(SystemDir + "ignored.txt"));
    EXPECT_TRUE(Logged("chart.ocx does not exist in system directory."));
    EXPECT_TRUE(Logged("   DllRegisterServer " + SystemDir + "chart.ocx = 0x00000000"));
    // The older one is unregistered before it is replaced, then the new one registered.
    EXPECT_TRUE(Logged("old.ocx Version on System: 0.0.0.0"));
    EXPECT_TRUE(Logged("old.ocx Version delivered: 2.0.0.0"));
    EXPECT_LT(LogText().find("   ==> Version on system is too old!"), LogText().find("   DllUnregisterServer " + SystemDir + "old.ocx"));
    EXPECT_LT(LogText().find("   DllUnregisterServer " + SystemDir + "old.ocx"),
              LogText().find("   DllRegisterServer " + SystemDir + "old.ocx = 0x00000000"));
    clsVersionInfo replaced;
    EXPECT_TRUE(replaced.GetFileInfo(SystemDir + "old.ocx"));
    EXPECT_EQ(replaced.NumericVersion(), "2.0.0.0");
    EXPECT_TRUE(clsString::EqualNoCaseAscii(Registered(), SystemDir + "old.ocx")) << Registered();
    // The newer one on the system stays and is not registered again.
    EXPECT_TRUE(Logged("newer.dll already exists in system directory."));
    EXPECT_FALSE(Logged(SystemDir + "newer.dll ="));
    EXPECT_TRUE(Logged("inuse.txt is in use and cannot be replaced."));

    // A disc without the folder changes nothing and says nothing.
    const size_t before = LogText().size();
    clsSystemFiles::Install(bed_->folder + "nodisc\\");
    EXPECT_EQ(LogText().size(), before);
}

} // namespace
} // namespace tovel::test
