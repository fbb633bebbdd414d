#include "ui/console/clsConsoleLayout.h"

#include <algorithm>
#include <cmath>

#include "ui/console/clsTextWidth.h"
#include "ui/console/clsTreeListText.h"

namespace tovel {

namespace {

// A form without a size (bad data) is laid out as a usual page.
constexpr int kDefaultFormWidth = 7500;
constexpr int kDefaultFormHeight = 5500;
// The size of a wizard page: what fills the screen.
constexpr double kPageWidth = 7200;
constexpr double kPageHeight = 5400;
constexpr int kMinOverlayCols = 24;
constexpr int kMarkerWidth = 4;   // "(o) " and "[x] "

bool IsBackground(ControlKind kind) { return kind == ControlKind::Frame || kind == ControlKind::Image; }

bool HasLines(const clsFormControl& c) {
    return (c.kind == ControlKind::TextBox && c.multiLine) || c.kind == ControlKind::ListBox ||
           c.kind == ControlKind::TreeListView;
}

int Round(double value) { return static_cast<int>(std::lround(value)); }

// Columns a control wants on its first line so its text is not cut.
int NeededWidth(const clsFormControl& c) {
    switch (c.kind) {
    case ControlKind::CommandButton: return clsTextWidth::Width(clsTextWidth::OneLine(c.caption)) + 4;
    case ControlKind::OptionButton:
    case ControlKind::CheckBox: return clsTextWidth::Width(clsTextWidth::OneLine(c.caption)) + kMarkerWidth;
    default: return 0;
    }
}

// Rows a control wants at a width: wrapped labels, options and check boxes.
int NeededRows(const clsFormControl& c, int width) {
    switch (c.kind) {
    case ControlKind::Label: return static_cast<int>(clsTextWidth::Wrap(c.caption, width).size());
    case ControlKind::OptionButton:
    case ControlKind::CheckBox:
        return static_cast<int>(clsTextWidth::Wrap(clsTextWidth::OneLine(c.caption), std::max(width - kMarkerWidth, 1)).size());
    default: return 1;
    }
}

std::vector<std::string> ContentLines(const clsFormControl& c, int width) {
    if (c.kind == ControlKind::ListBox) return c.items;
    if (c.kind == ControlKind::TreeListView) return clsTreeListText::Lines(c);
    return clsTextWidth::Wrap(c.caption, width);
}

// Multi-line texts and lists get a border when there is room for one; its right edge
// carries the scroll bar.
bool Bordered(const CellRect& r) { return r.h >= 3 && r.w >= 4; }

CellRect TextArea(const CellRect& r) {
    if (Bordered(r)) return {r.x + 1, r.y + 1, r.w - 2, r.h - 2};
    return {r.x, r.y, std::max(r.w - 1, 1), r.h};
}

class Placer {
public:
    Placer(const clsForm& form, FormPlace& place) : form_(form), place_(place) {}

    void Run() {
        std::vector<size_t> order;
        for (size_t i = 0; i < form_.Controls().size(); ++i) {
            if (form_.Controls()[i].visible) order.push_back(i);
        }
        std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
            const auto& ca = form_.Controls()[a];
            const auto& cb = form_.Controls()[b];
            return ca.top != cb.top ? ca.top < cb.top : ca.left < cb.left;
        });
        for (size_t i : order) place_.controls.push_back({.control = i, .rect = Scaled(form_.Controls()[i])});
        for (auto& p : place_.controls) {
            if (!IsBackground(Of(p).kind)) Separate(p);
        }
        for (auto& p : place_.controls) {
            if (!IsBackground(Of(p).kind)) Widen(p);
        }
        for (auto& p : place_.controls) {
            if (!IsBackground(Of(p).kind)) Lengthen(p);
        }
        for (auto& p : place_.controls) Finish(p);
    }

private:
    const clsFormControl& Of(const ControlPlace& p) const { return form_.Controls()[p.control]; }

    CellRect Scaled(const clsFormControl& c) const {
        const CellRect& in = place_.inner;
        const int left = std::max(c.left, 0), top = std::max(c.top, 0);
        const int right = left + std::max(c.width, 0), bottom = top + std::max(c.height, 0);
        CellRect r;
        r.x = in.x + Round(left / place_.twipsPerCol);
        r.y = in.y + Round(top / place_.twipsPerRow);
        r.w = std::max(in.x + Round(right / place_.twipsPerCol) - r.x, 1);
        r.h = std::max(in.y + Round(bottom / place_.twipsPerRow) - r.y, 1);
        r.x = std::min(r.x, in.Right() - 1);
        r.y = std::min(r.y, in.Bottom() - 1);
        r.w = std::min(r.w, in.Right() - r.x);
        r.h = std::min(r.h, in.Bottom() - r.y);
        return r;
    }

    // Another content control that a rectangle would overlap.
    const ControlPlace* Blocker(const CellRect& r, const ControlPlace& self) const {
        for (const auto& p : place_.controls) {
            if (&p == &self || IsBackground(Of(p).kind) || !p.rect.Overlaps(r)) continue;
            return &p;
        }
        return nullptr;
    }

    bool Free(const CellRect& r, const ControlPlace& self) const {
        return r.Inside(place_.inner) && Blocker(r, self) == nullptr;
    }

    // Rounding twips to cells can make neighbours overlap: move a control right of what it
    // overlaps, or else below it, when it fits there. Earlier controls (reading order) stay.
    void Separate(ControlPlace& p) {
        const auto earlier = [&](const CellRect& r) -> const ControlPlace* {
            for (const auto& q : place_.controls) {
                if (&q == &p) return nullptr;
                if (!IsBackground(Of(q).kind) && q.rect.Overlaps(r)) return &q;
            }
            return nullptr;
        };
        const ControlPlace* blocker = earlier(p.rect);
        if (blocker == nullptr) return;
        CellRect right = p.rect;
        right.x = blocker->rect.Right();
        if (right.Inside(place_.inner) && earlier(right) == nullptr) {
            p.rect = right;
            return;
        }
        CellRect down = p.rect;
        for (int tries = 0; tries < 16 && blocker != nullptr; ++tries) {
            down.y = blocker->rect.Bottom();
            blocker = earlier(down);
        }
        if (blocker == nullptr && down.Inside(place_.inner)) p.rect = down;
    }

    // A button or option narrower than its text grows to the right, then to the left, into
    // free cells.
    void Widen(ControlPlace& p) {
        const int need = NeededWidth(Of(p));
        while (p.rect.w < need) {
            CellRect wider = p.rect;
            ++wider.w;
            if (!Free(wider, p)) break;
            p.rect = wider;
        }
        while (p.rect.w < need) {
            CellRect wider = p.rect;
            --wider.x;
            ++wider.w;
            if (!Free(wider, p)) break;
            p.rect = wider;
        }
    }

    // A wrapped text longer than its rows grows downwards into free rows.
    void Lengthen(ControlPlace& p) {
        const int need = NeededRows(Of(p), p.rect.w);
        while (p.rect.h < need) {
            CellRect longer = p.rect;
            ++longer.h;
            if (!Free(longer, p)) break;
            p.rect = longer;
        }
    }

    void Finish(ControlPlace& p) {
        const clsFormControl& c = Of(p);
        if (HasLines(c)) {
            p.text = TextArea(p.rect);
            p.contentRows = static_cast<int>(ContentLines(c, p.text.w).size());
        }
        if (!c.enabled) return;
        switch (c.kind) {
        case ControlKind::CommandButton:
        case ControlKind::OptionButton:
        case ControlKind::CheckBox: p.focusable = true; break;
        case ControlKind::TextBox: p.focusable = !c.locked || p.ScrollLimit() > 0; break;
        case ControlKind::ListBox: p.focusable = !c.items.empty(); break;   // a line can be chosen
        case ControlKind::TreeListView: p.focusable = !c.nodes.empty(); break;
        default: break;
        }
    }

    const clsForm& form_;
    FormPlace& place_;
};

// ---- drawing ----

uint8_t StateAttr(const clsFormControl& c) { return c.enabled ? cell::kNormal : cell::kDim; }

std::string FileName(const std::string& path) {
    const size_t slash = path.find_last_of("\\/");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

void Box(clsScreenGrid& grid, const CellRect& r, char horizontal, uint8_t attr) {
    if (r.w < 2 || r.h < 2) return;
    const std::string top = "+" + std::string(static_cast<size_t>(r.w - 2), horizontal) + "+";
    grid.Put(r.x, r.y, top, attr);
    grid.Put(r.x, r.Bottom() - 1, top, attr);
    for (int y = r.y + 1; y < r.Bottom() - 1; ++y) {
        grid.Put(r.x, y, "|", attr);
        grid.Put(r.Right() - 1, y, "|", attr);
    }
}

void DrawLabel(clsScreenGrid& grid, const clsFormControl& c, const CellRect& r) {
    const auto lines = clsTextWidth::Wrap(c.caption, r.w);
    for (int i = 0; i < r.h && i < static_cast<int>(lines.size()); ++i) {
        grid.Put(r.x, r.y + i, lines[static_cast<size_t>(i)], StateAttr(c), r.w);
    }
}

void DrawButton(clsScreenGrid& grid, const clsFormControl& c, const CellRect& r, bool focused) {
    const std::string caption = clsTextWidth::OneLine(c.caption);
    std::string text = "[ " + caption + " ]";
    if (clsTextWidth::Width(text) > r.w) {
        text = r.w >= 3 ? "[" + clsTextWidth::Fit(caption, r.w - 2) + "]" : clsTextWidth::Fit(caption, r.w);
    }
    uint8_t attr = StateAttr(c);
    if (c.isDefault) attr |= cell::kBold;
    if (focused) attr |= cell::kReverse;
    const int x = r.x + (r.w - clsTextWidth::Width(text)) / 2;
    grid.Put(x, r.y + (r.h - 1) / 2, text, attr, r.Right() - x);
}

void DrawChoice(clsScreenGrid& grid, const clsFormControl& c, const CellRect& r, bool focused) {
    const bool option = c.kind == ControlKind::OptionButton;
    const std::string marker = option ? (c.value != 0 ? "(o) " : "( ) ") : (c.value != 0 ? "[x] " : "[ ] ");
    const auto lines = clsTextWidth::Wrap(clsTextWidth::OneLine(c.caption), std::max(r.w - kMarkerWidth, 1));
    const uint8_t attr = StateAttr(c);
    const int used = grid.Put(r.x, r.y, marker + lines.front(), attr, r.w);
    if (focused) grid.Mark({r.x, r.y, used, 1}, cell::kReverse);
    for (int i = 1; i < r.h && i < static_cast<int>(lines.size()); ++i) {
        grid.Put(r.x + kMarkerWidth, r.y + i, lines[static_cast<size_t>(i)], attr, r.w - kMarkerWidth);
    }
}

void DrawField(clsScreenGrid& grid, const clsFormControl& c, const CellRect& r, bool focused) {
    const int y = r.y + (r.h - 1) / 2;
    const bool brackets = r.w >= 3;
    const int area = brackets ? r.w - 2 : r.w;
    const int x = brackets ? r.x + 1 : r.x;
    // The end of a long text stays in sight, where typing goes on; one cell for the cursor.
    std::string text = clsTextWidth::OneLine(c.caption);
    const int room = focused ? area - 1 : area;
    while (clsTextWidth::Width(text) > room && !text.empty()) {
        size_t next = 0;
        (void)clsTextWidth::At(text, 0, next);
        text.erase(0, next);
    }
    const uint8_t attr = StateAttr(c);
    if (brackets) {
        grid.Put(r.x, y, "[", attr);
        grid.Put(r.Right() - 1, y, "]", attr);
    }
    grid.Fill({x, y, area, 1}, ' ', c.locked ? attr : static_cast<uint8_t>(attr | cell::kUnderline));
    const int used = grid.Put(x, y, text, c.locked ? attr : static_cast<uint8_t>(attr | cell::kUnderline), area);
    if (focused) {
        grid.Mark({x, y, area, 1}, cell::kReverse);
        if (used < area) grid.Put(x + used, y, "_", attr | cell::kReverse);
    }
}

void DrawLines(clsScreenGrid& grid, const clsFormControl& c, const ControlPlace& p, int scroll, bool focused) {
    const CellRect& r = p.rect;
    const CellRect& t = p.text;
    const uint8_t attr = StateAttr(c);
    const bool border = Bordered(r);
    if (border) Box(grid, r, focused ? '=' : '-', focused ? static_cast<uint8_t>(attr | cell::kBold) : attr);
    const auto lines = ContentLines(c, t.w);
    for (int i = 0; i < t.h && scroll + i < static_cast<int>(lines.size()); ++i) {
        const int line = scroll + i;
        const bool grey = c.kind == ControlKind::TreeListView && line < static_cast<int>(c.nodes.size()) &&
                          c.nodes[static_cast<size_t>(line)].grey;
        grid.Put(t.x, t.y + i, lines[static_cast<size_t>(line)], grey ? cell::kDim : attr, t.w);
        const bool chosen = c.kind == ControlKind::ListBox || c.kind == ControlKind::TreeListView;
        if (chosen && line == c.value) grid.Mark({t.x, t.y + i, t.w, 1}, cell::kReverse);
    }
    const int limit = p.ScrollLimit();
    if (limit <= 0) return;
    // The scroll bar: on the right border, or in the last column without one.
    const int barX = r.Right() - 1;
    const int barTop = t.y, barRows = t.h;
    for (int i = 0; i < barRows; ++i) grid.Put(barX, barTop + i, ":", cell::kDim);
    const int thumb = barRows <= 1 ? 0 : static_cast<int>(static_cast<long>(scroll) * (barRows - 1) / limit);
    grid.Put(barX, barTop + thumb, "#", focused ? static_cast<uint8_t>(cell::kReverse) : cell::kNormal);
    if (barRows >= 3) {
        if (scroll > 0) grid.Put(barX, barTop, "^", cell::kBold);
        if (scroll < limit) grid.Put(barX, barTop + barRows - 1, "v", cell::kBold);
    }
}

void DrawFrameControl(clsScreenGrid& grid, const clsFormControl& c, const CellRect& r) {
    if (r.h == 1) {   // a rule: a frame only a line high
        grid.Put(r.x, r.y, std::string(static_cast<size_t>(r.w), '-'), cell::kDim);
    } else {
        Box(grid, r, '-', cell::kDim);
    }
    if (!c.caption.empty() && r.w > 4) grid.Put(r.x + 2, r.y, " " + clsTextWidth::OneLine(c.caption) + " ", StateAttr(c), r.w - 4);
}

void DrawImage(clsScreenGrid& grid, const clsFormControl& c, const CellRect& r) {
    const std::string name = c.picture.empty() ? std::string("none") : FileName(c.picture);
    std::string text = "<picture: " + name + ">";
    if (clsTextWidth::Width(text) > r.w) text = "<" + name + ">";   // a narrow picture: its name
    grid.Put(r.x, r.y, text, cell::kDim, r.w);
}

} // namespace

const ControlPlace* FormPlace::Find(size_t control) const {
    for (const auto& p : controls) {
        if (p.control == control) return &p;
    }
    return nullptr;
}

FormPlace clsConsoleLayout::Place(const clsForm& form, int cols, int rows, const FormPlace* under) {
    cols = std::max(cols, 4);
    rows = std::max(rows, 3);
    const double formW = form.Width() > 0 ? form.Width() : kDefaultFormWidth;
    const double formH = form.Height() > 0 ? form.Height() : kDefaultFormHeight;
    // Alone, a page fills the screen and a smaller form (a message before the first page)
    // keeps the scale a page would have; over another form, that form's scale.
    const double perCol = under != nullptr ? under->twipsPerCol
                                           : std::max(std::max(formW, kPageWidth) / (cols - 2), kMinTwipsPerCol);
    const double perRow = under != nullptr ? under->twipsPerRow
                                           : std::max(std::max(formH, kPageHeight) / (rows - 2), kMinTwipsPerRow);
    const int innerW = std::max(std::clamp(Round(formW / perCol), std::min(kMinOverlayCols, cols - 2), cols - 2), 1);
    const int innerH = std::max(std::clamp(Round(formH / perRow), std::min(3, rows - 2), rows - 2), 1);
    FormPlace place;
    place.frame = {(cols - innerW - 2) / 2, (rows - innerH - 2) / 2, innerW + 2, innerH + 2};
    place.inner = {place.frame.x + 1, place.frame.y + 1, innerW, innerH};
    place.twipsPerCol = formW / innerW;
    place.twipsPerRow = formH / innerH;
    Placer(form, place).Run();
    return place;
}

std::optional<size_t> clsConsoleLayout::NextFocus(const FormPlace& place, std::optional<size_t> current, int step) {
    std::vector<size_t> ring;
    for (const auto& p : place.controls) {
        if (p.focusable) ring.push_back(p.control);
    }
    if (ring.empty()) return std::nullopt;
    const auto at = current ? std::find(ring.begin(), ring.end(), *current) : ring.end();
    if (at == ring.end()) return step >= 0 ? ring.front() : ring.back();
    const auto n = static_cast<long>(ring.size());
    const long i = ((at - ring.begin()) + step % n + n) % n;
    return ring[static_cast<size_t>(i)];
}

void clsConsoleLayout::Settle(const clsForm& form, const FormPlace& place, FormView& view) {
    const auto canFocus = [&](std::optional<size_t> i) {
        const ControlPlace* p = i ? place.Find(*i) : nullptr;
        return p != nullptr && p->focusable;
    };
    if (!canFocus(view.focus)) {
        std::optional<size_t> chosen;
        if (view.focus) {
            // The focused control went away (hidden or disabled): the next one in reading
            // order takes it.
            chosen = NextFocus(place, std::nullopt, 1);
            bool passed = false;
            for (const auto& p : place.controls) {
                if (p.control == *view.focus) passed = true;
                else if (passed && p.focusable) {
                    chosen = p.control;
                    break;
                }
            }
        } else {
            for (const auto& p : place.controls) {
                if (p.focusable && form.Controls()[p.control].isDefault) chosen = p.control;
            }
            if (!chosen) chosen = NextFocus(place, std::nullopt, 1);
        }
        view.focus = chosen;
    }
    for (auto& [control, offset] : view.scroll) {
        const ControlPlace* p = place.Find(control);
        offset = p == nullptr ? 0 : std::clamp(offset, 0, p->ScrollLimit());
    }
}

void clsConsoleLayout::Draw(const clsForm& form, const FormPlace& place, const FormView& view, bool front, bool busy,
                            clsScreenGrid& grid) {
    const CellRect& f = place.frame;
    grid.Fill(f, ' ', cell::kNormal);
    Box(grid, f, front ? '=' : '-', cell::kNormal);
    const std::string busyMark = front && busy ? "[ busy ]" : "";
    const int busyWidth = static_cast<int>(busyMark.size());
    if (!busyMark.empty() && f.w > busyWidth + 4) grid.Put(f.Right() - busyWidth - 2, f.y, busyMark, cell::kBold | cell::kReverse);
    const std::string title = " " + clsTextWidth::OneLine(form.Caption()) + " ";
    const int titleRoom = f.w - 4 - (busyMark.empty() ? 0 : busyWidth + 1);
    if (titleRoom > 2 && !form.Caption().empty()) grid.Put(f.x + 2, f.y, title, cell::kBold, titleRoom);

    for (int pass = 0; pass < 2; ++pass) {   // pictures and frames first: the rest lies on them
        for (const auto& p : place.controls) {
            const clsFormControl& c = form.Controls()[p.control];
            if (IsBackground(c.kind) != (pass == 0)) continue;
            const bool focused = front && view.focus == p.control;
            const auto scrolled = view.scroll.find(p.control);
            const int scroll = scrolled == view.scroll.end() ? 0 : std::clamp(scrolled->second, 0, p.ScrollLimit());
            switch (c.kind) {
            case ControlKind::Label: DrawLabel(grid, c, p.rect); break;
            case ControlKind::CommandButton: DrawButton(grid, c, p.rect, focused); break;
            case ControlKind::OptionButton:
            case ControlKind::CheckBox: DrawChoice(grid, c, p.rect, focused); break;
            case ControlKind::TextBox:
                if (c.multiLine) DrawLines(grid, c, p, scroll, focused);
                else DrawField(grid, c, p.rect, focused);
                break;
            case ControlKind::ListBox:
            case ControlKind::TreeListView: DrawLines(grid, c, p, scroll, focused); break;
            case ControlKind::Image: DrawImage(grid, c, p.rect); break;
            case ControlKind::Frame:
                // A rule that rounding put on a row with text would cut through it: left out.
                if (p.rect.h == 1 && std::any_of(place.controls.begin(), place.controls.end(), [&](const ControlPlace& q) {
                        return !IsBackground(form.Controls()[q.control].kind) && q.rect.Overlaps(p.rect);
                    })) {
                    break;
                }
                DrawFrameControl(grid, c, p.rect);
                break;
            }
        }
    }
}

clsScreenGrid clsConsoleLayout::Screen(std::vector<ScreenForm>& forms, int cols, int rows, bool busy) {
    clsScreenGrid grid(cols, rows);
    const FormPlace* under = nullptr;
    for (size_t i = 0; i < forms.size(); ++i) {
        ScreenForm& s = forms[i];
        s.place = Place(*s.form, grid.Cols(), grid.Rows(), under);
        Settle(*s.form, s.place, *s.view);
        Draw(*s.form, s.place, *s.view, i + 1 == forms.size(), busy, grid);
        under = &s.place;
    }
    return grid;
}

std::vector<std::string> clsConsoleLayout::Lines(clsForm& form, int cols, int rows) {
    FormView view;
    std::vector<ScreenForm> forms = {{&form, &view, {}}};
    return Screen(forms, cols, rows, false).Lines();
}

} // namespace tovel
