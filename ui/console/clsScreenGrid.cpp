#include "ui/console/clsScreenGrid.h"

#include <algorithm>

#include "ui/console/clsTextWidth.h"

namespace tovel {

clsScreenGrid::clsScreenGrid(int cols, int rows)
    : cols_(std::max(cols, 1)), rows_(std::max(rows, 1)),
      cells_(static_cast<size_t>(cols_) * static_cast<size_t>(rows_)) {}

void clsScreenGrid::Split(int x, int y) {
    if (x < 0 || x >= cols_) return;
    Cell& c = At(x, y);
    if (c.glyph.empty() && x > 0) {                    // right half: blank the left half
        At(x - 1, y).glyph = " ";
        c.glyph = " ";
    } else if (x + 1 < cols_ && At(x + 1, y).glyph.empty()) {   // left half: blank the right half
        c.glyph = " ";
        At(x + 1, y).glyph = " ";
    }
}

int clsScreenGrid::Put(int x, int y, std::string_view text, uint8_t attr, int maxWidth) {
    if (y < 0 || y >= rows_ || x >= cols_) return 0;
    const int limit = std::min(cols_, x + std::max(maxWidth, 0));
    int col = x;
    int lastCol = -1;   // the cell that a zero-width mark joins
    size_t next = 0;
    for (size_t at = 0; at < text.size(); at = next) {
        const auto c = clsTextWidth::At(text, at, next);
        int w = clsTextWidth::Of(c.code);
        std::string glyph(c.bytes);
        if (c.code < 0x20 || c.code == 0x7F) {
            glyph = " ";
            w = 1;
        } else if (w == 0) {
            if (lastCol >= 0) At(lastCol, y).glyph += glyph;
            continue;
        }
        if (col + w > limit) break;
        if (col < 0) {   // left of the screen: skip without drawing
            col += w;
            continue;
        }
        Split(col, y);
        if (w == 2) Split(col + 1, y);
        At(col, y) = Cell{glyph, attr};
        if (w == 2) At(col + 1, y) = Cell{"", attr};
        lastCol = col;
        col += w;
    }
    return std::max(col - x, 0);
}

void clsScreenGrid::Fill(const CellRect& rect, char glyph, uint8_t attr) {
    const int x0 = std::max(rect.x, 0), x1 = std::min(rect.Right(), cols_);
    const int y0 = std::max(rect.y, 0), y1 = std::min(rect.Bottom(), rows_);
    for (int y = y0; y < y1; ++y) {
        if (x0 < x1) {
            Split(x0, y);
            Split(x1 - 1, y);
        }
        for (int x = x0; x < x1; ++x) At(x, y) = Cell{std::string(1, glyph), attr};
    }
}

void clsScreenGrid::Mark(const CellRect& rect, uint8_t attr) {
    const int x0 = std::max(rect.x, 0), x1 = std::min(rect.Right(), cols_);
    const int y0 = std::max(rect.y, 0), y1 = std::min(rect.Bottom(), rows_);
    for (int y = y0; y < y1; ++y) {
        for (int x = x0; x < x1; ++x) At(x, y).attr |= attr;
    }
}

std::string clsScreenGrid::Line(int y) const {
    std::string line;
    if (y < 0 || y >= rows_) return line;
    for (int x = 0; x < cols_; ++x) line += At(x, y).glyph;
    return line;
}

std::vector<std::string> clsScreenGrid::Lines() const {
    std::vector<std::string> lines;
    for (int y = 0; y < rows_; ++y) lines.push_back(Line(y));
    return lines;
}

uint8_t clsScreenGrid::AttrAt(int x, int y) const {
    if (x < 0 || y < 0 || x >= cols_ || y >= rows_) return cell::kNormal;
    return At(x, y).attr;
}

std::string clsScreenGrid::AnsiLine(int y) const {
    std::string line;
    if (y < 0 || y >= rows_) return line;
    uint8_t current = cell::kNormal;
    for (int x = 0; x < cols_; ++x) {
        const Cell& c = At(x, y);
        if (c.attr != current) {
            line += "\x1b[0";
            if ((c.attr & cell::kBold) != 0) line += ";1";
            if ((c.attr & cell::kDim) != 0) line += ";2";
            if ((c.attr & cell::kUnderline) != 0) line += ";4";
            if ((c.attr & cell::kReverse) != 0) line += ";7";
            line += 'm';
            current = c.attr;
        }
        line += c.glyph;
    }
    if (current != cell::kNormal) line += "\x1b[0m";
    return line;
}

} // namespace tovel
