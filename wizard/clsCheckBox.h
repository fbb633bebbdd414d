#pragma once
// The effect of one setup dependency between two products when the first one's box on the
// component page is checked or cleared. The records carry the whole selection state (check
// code, Selected, locker, shared and subject counts); this class only applies one link's rule
// to them and keeps nothing between calls but the link last set. Which links are applied, in
// which order, and with which flags is clsSelectionWalk's business.
//
// The rules are deliberately lopsided: a toggle acts only on select, a recommend holds but is
// never undone, a setreset link counts both ends, a force lock is released only by the
// product that took it, and a product held by a foreign lock keeps a subject count of one.
#include <cstdint>

#include "catalogue/mdlCatalogueCodes.h"

namespace tovel {

class clsSIFApplication;
class clsSIFApplicationItem;

class clsCheckBox {
public:
    /// Links are looked up in this catalogue by index (from 1) on every call.
    explicit clsCheckBox(clsSIFApplication& catalogue) : catalogue_(catalogue) {}

    /// The link under evaluation: the product whose box changed, the product the link names,
    /// and the link's type. Any type outside recommend..dependforce has no effect of its own.
    void SetLink(int16_t thisIndex, int32_t otherIndex, DependenceType type);
    /// When set, the select effect leaves the other product's state alone and only counts it.
    void SetCountOnly(bool countOnly) { countOnly_ = countOnly; }
    /// When set, clearing a force link to a product that another product locked changes
    /// nothing, not even the subject count.
    void SetForeignLock(bool foreignLock) { foreignLock_ = foreignLock; }
    [[nodiscard]] bool CountOnly() const { return countOnly_; }
    [[nodiscard]] bool ForeignLock() const { return foreignLock_; }

    /// Applies the link's effect of checking this product. An index outside the catalogue
    /// changes nothing; nothing is thrown.
    void ApplyCheckEffect();
    /// Applies the link's effect of clearing this product. An index outside the catalogue
    /// changes nothing; nothing is thrown.
    void ApplyUncheckEffect();

    /// True when the product's last version action is "$DoNotInstall$" (any case).
    [[nodiscard]] static bool LastActionIsDoNotInstall(const clsSIFApplicationItem& item);

private:
    void CheckEffect(clsSIFApplicationItem& self, clsSIFApplicationItem& other);
    void UncheckEffect(clsSIFApplicationItem& self, clsSIFApplicationItem& other);
    void ReleaseForce(const clsSIFApplicationItem& self, clsSIFApplicationItem& other) const;
    static void ReleaseSetReset(clsSIFApplicationItem& item);
    static void Check(clsSIFApplicationItem& item, int32_t code);
    static void Clear(clsSIFApplicationItem& item, int32_t code);

    clsSIFApplication& catalogue_;
    int16_t thisIndex_ = 0;
    int32_t otherIndex_ = 0;
    DependenceType type_ = DependenceType::Recommend;
    bool countOnly_ = false;
    bool foreignLock_ = false;
};

} // namespace tovel
