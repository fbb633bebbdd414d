#pragma once
// Language and locale identifiers as Windows builds them (MAKELANGID, MAKELCID and their
// kin), the code page and character set that belong to a language, and whether the system
// can lay out right-to-left scripts.
//
//   language id: bits 0-9 primary language, bits 10-15 sublanguage     (0x0407 German)
//   locale id:   bits 0-15 language id, bits 16-19 sort id, 20-23 sort version
#include <cstdint>

#include "platform/clsPlatformSystem.h"

namespace tovel {

class clsLanguageLcidCp {
public:
    [[nodiscard]] static constexpr uint16_t MakeLangId(uint16_t primary, uint16_t sub) {
        return static_cast<uint16_t>(((sub & 0x3F) << 10) | (primary & 0x3FF));
    }
    [[nodiscard]] static constexpr uint16_t PrimaryLangId(uint16_t langId) {
        return static_cast<uint16_t>(langId & 0x3FF);
    }
    [[nodiscard]] static constexpr uint16_t SubLangId(uint16_t langId) { return static_cast<uint16_t>(langId >> 10); }
    [[nodiscard]] static constexpr uint32_t MakeLcid(uint16_t langId, uint16_t sortId) {
        return (static_cast<uint32_t>(sortId & 0xF) << 16) | langId;
    }
    [[nodiscard]] static constexpr uint32_t MakeSortLcid(uint16_t langId, uint16_t sortId, uint16_t sortVersion) {
        return MakeLcid(langId, sortId) | (static_cast<uint32_t>(sortVersion & 0xF) << 20);
    }
    [[nodiscard]] static constexpr uint16_t LangIdFromLcid(uint32_t lcid) { return static_cast<uint16_t>(lcid & 0xFFFF); }
    [[nodiscard]] static constexpr uint16_t SortIdFromLcid(uint32_t lcid) {
        return static_cast<uint16_t>((lcid >> 16) & 0xF);
    }
    [[nodiscard]] static constexpr uint16_t SortVersionFromLcid(uint32_t lcid) {
        return static_cast<uint16_t>((lcid >> 20) & 0xF);
    }
    /// value shifted left by bits as a 32-bit register shifts it; 32 bits or more give 0.
    [[nodiscard]] static constexpr uint32_t LLeftShift(uint32_t value, uint32_t bits) {
        return bits >= 32 ? 0 : value << bits;
    }
    /// value shifted right without sign; 32 bits or more give 0.
    [[nodiscard]] static constexpr uint32_t LRightShift(uint32_t value, uint32_t bits) {
        return bits >= 32 ? 0 : value >> bits;
    }

    /// The ANSI code page Windows gives a locale (LOCALE_IDEFAULTANSICODEPAGE): 932 for
    /// Japanese, 1250 for Central European languages, ...; 1252 for the Western languages and
    /// for any language the table does not know.
    [[nodiscard]] static uint32_t AnsiCodePageFromLcid(uint32_t lcid);
    /// The GDI character set of a code page (ANSI_CHARSET 0, SHIFTJIS_CHARSET 128, ...);
    /// DEFAULT_CHARSET 1 for a code page without one.
    [[nodiscard]] static uint8_t CharsetFromCodePage(uint32_t codePage);

    /// True if the system can show right-to-left scripts. Every edition of the NT family from
    /// 5.0 (Windows 2000) on mirrors windows and shapes Arabic and Hebrew; older systems
    /// (95, 98, Me, NT 4) do so only in their Hebrew and Arabic editions, known by their
    /// ANSI code page 1255 or 1256.
    [[nodiscard]] static bool FOnBiDiPlatform(const OsVersion& version, uint32_t ansiCodePage);
    /// The same for the machine the setup runs on.
    [[nodiscard]] static bool FOnBiDiPlatform();
};

} // namespace tovel
