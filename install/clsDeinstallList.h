#pragma once
// The disc's registry list of the products it installed (its UninstallKey setting names the
// key): Count, and per entry Prod001 "SKey=<code> DeinstallKey=<key>" and Param001 with the
// removal parameters, so a later removal of the whole disc finds every product.
#include <string>
#include <vector>

namespace tovel {

class clsSIFApplicationItem;

class clsDeinstallList {
public:
    /// The list under a key path; a path without a root lies below HKEY_LOCAL_MACHINE.
    explicit clsDeinstallList(std::string keyPath);

    /// Records a product: the entry that already names one of its deinstall keys is written
    /// again, else a new entry Count + 1 is added. Returns the entry's number; 0 when the key
    /// path is empty or no deinstall key is given (nothing is written).
    int Record(const std::string& setupKey, const std::vector<std::string>& deinstallKeys,
               const std::string& deinstallParam) const;
    /// Records a product under its product code (the setup key) with the DeinstallKey<n> of
    /// its description file, or its DeinstallKey when the file numbers none, and its
    /// DeinstallParam. Returns the entry's number as Record does.
    int RecordProduct(const clsSIFApplicationItem& item) const;
    /// The number of the first entry up to Count naming one of the keys; 0 when none does.
    [[nodiscard]] int Find(const std::vector<std::string>& deinstallKeys) const;
    /// The value name of an entry: "Prod" or "Param" and the number in three digits.
    [[nodiscard]] static std::string EntryName(const char* word, int number);
    /// DeinstallKey1, DeinstallKey2, ... of a description file's GENERAL, up to the first empty one.
    [[nodiscard]] static std::vector<std::string> DeinstallKeysOf(const std::string& sifPath);

private:
    std::string keyPath_;
};

} // namespace tovel
