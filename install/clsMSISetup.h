#pragma once
// The Windows Installer runtime: whether its catalogue entry must be installed before the
// products that are Windows Installer packages.
namespace tovel {

class clsSIFApplication;

class clsMSISetup {
public:
    /// When CheckMSI of Setups.ini is on: finds the runtime's entry ("MSIINSTA" on Windows
    /// 95/98/Me, "MSIINSTW" on the NT family) and marks it for installation when
    /// "MSIExec.exe" is missing from the system folder or older than the entry's Build, else
    /// as not to be installed.
    static void CheckMSI(clsSIFApplication& catalogue);
};

} // namespace tovel
