#pragma once
// One line of a wizard script: what a disc author (or a test) types to drive the text
// wizard without a person. The grammar, one action a line:
//
//   line    = blank | "#" comment | action
//   action  = "click"  control          press a button, choose an option, toggle a check box
//           | "choose" control          choose an option
//           | "tick"   control          make a check box ticked (nothing if it is)
//           | "untick" control          make a check box clear (nothing if it is)
//           | "type"   control "=" text  replace a text box's text
//           | "select" control "=" line  choose a line of a list box
//           | "enter"                   press the default button
//           | "esc"                     press the cancel button, or else the close box
//           | "close"                   the close box of the form
//           | "timer" [timer-name]      fire the form's running timers (or one) once
//           | "wait" [count | "end"]    let time pass: each round sleeps the shortest running
//                                       timer's interval on the machine's clock and fires the
//                                       running timers; count rounds, or until the form is
//                                       left or none of its timers runs any more
//           | "toggle" node             flip the box of a line of the form's tree
//           | "focus" node              move the tree's cursor to a line (its description shows)
//           | "print"                   print the form in front again, changed or not
//   control = name [index] | name "(" index ")"      index: element of a control array
//   line    = the line's number from 0, or its text: the same, else the same without regard
//             to case, else the first line that begins with it (without regard to case)
//   node    = a tree line: its key (the product code) exactly, else its key or text without
//             regard to case, else the first text that begins with it
//   text    = everything after the first "=", blanks at both ends removed; in double
//             quotes ("  a b  ") it is kept as written, so "" is an empty text
//
// Verbs and control names are matched without regard to case; a line may begin with
// blanks and end with a carriage return.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovel {

enum class ScriptVerb { None, Click, Choose, Tick, Untick, Type, Select, Enter, Esc, Close, Timer, Wait, Toggle, Focus, Print };

struct ScriptCommand {
    ScriptVerb verb = ScriptVerb::None;   ///< None: a blank or comment line, or a wrong one
    std::string control{};                ///< control name as written
    int index = -1;                       ///< control array element; -1 for none given
    std::string text{};                   ///< type: the new text; select: the line; timer: the timer's name;
                                          ///< toggle, focus: the tree line
    int count = 1;                        ///< wait: how many rounds
    bool untilLeft = false;               ///< wait end: as many rounds as the form's timers run
    std::string error{};                  ///< why the line is wrong; empty when it is not
};

class clsScriptCommand {
public:
    static constexpr int kMaxWait = 10000;
    /// Reads one line. A wrong line comes back with verb None and the reason in `error`.
    [[nodiscard]] static ScriptCommand Parse(std::string_view line);
    /// The line of `items` that `line` names (see the grammar), or -1 for none.
    [[nodiscard]] static int MatchLine(const std::vector<std::string>& items, std::string_view line);
    /// The verb's word ("click").
    [[nodiscard]] static std::string Word(ScriptVerb verb);
};

} // namespace tovel
