#pragma once
// A screen of character cells, each with its attributes: what the text wizard draws a form
// into before it goes to the terminal. Pure data, so a layout can be checked as plain lines.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tovel {

/// Attributes of a cell; they combine.
namespace cell {
inline constexpr uint8_t kNormal = 0, kBold = 1, kDim = 2, kReverse = 4, kUnderline = 8;
} // namespace cell

/// A rectangle of cells: column x, row y (0-based), w columns wide, h rows high.
struct CellRect {
    int x = 0, y = 0, w = 0, h = 0;
    [[nodiscard]] int Right() const { return x + w; }    ///< the first column after it
    [[nodiscard]] int Bottom() const { return y + h; }   ///< the first row below it
    [[nodiscard]] bool Overlaps(const CellRect& o) const {
        return x < o.Right() && o.x < Right() && y < o.Bottom() && o.y < Bottom();
    }
    [[nodiscard]] bool Inside(const CellRect& o) const {
        return x >= o.x && y >= o.y && Right() <= o.Right() && Bottom() <= o.Bottom();
    }
    bool operator==(const CellRect&) const = default;
};

class clsScreenGrid {
public:
    clsScreenGrid(int cols, int rows);

    [[nodiscard]] int Cols() const { return cols_; }
    [[nodiscard]] int Rows() const { return rows_; }

    /// Writes one line of text from column x of row y, at most `maxWidth` columns and never
    /// past the right edge; control characters become blanks and a wide character that does
    /// not fit whole is left out. Returns the columns written.
    int Put(int x, int y, std::string_view text, uint8_t attr, int maxWidth = 1 << 20);
    /// Fills a rectangle (clipped to the screen) with one ASCII character.
    void Fill(const CellRect& rect, char glyph, uint8_t attr);
    /// Adds attributes to the cells of a rectangle, keeping their text.
    void Mark(const CellRect& rect, uint8_t attr);

    /// Row y as plain text, exactly Cols() columns wide.
    [[nodiscard]] std::string Line(int y) const;
    [[nodiscard]] std::vector<std::string> Lines() const;
    /// Row y with the escape sequences for its attributes, ending with them reset.
    [[nodiscard]] std::string AnsiLine(int y) const;
    /// The attributes of one cell (for tests of focus and state marks).
    [[nodiscard]] uint8_t AttrAt(int x, int y) const;

private:
    struct Cell {
        std::string glyph = " ";   ///< "" for the right half of a wide character
        uint8_t attr = cell::kNormal;
    };
    Cell& At(int x, int y) { return cells_[static_cast<size_t>(y) * static_cast<size_t>(cols_) + static_cast<size_t>(x)]; }
    [[nodiscard]] const Cell& At(int x, int y) const {
        return cells_[static_cast<size_t>(y) * static_cast<size_t>(cols_) + static_cast<size_t>(x)];
    }
    // Blanks a wide character of which only one half is about to be overwritten.
    void Split(int x, int y);

    int cols_;
    int rows_;
    std::vector<Cell> cells_;
};

} // namespace tovel
