#pragma once
// A silent run's answers: the installation page reads the answer file when it loads, and the
// answers the pages would have asked for (setup language, product languages, bus, new or
// update) become the run's, as if a person had given them.
#include "install/clsSilentMode.h"

namespace tovel {

class clsSilentAnswers {
public:
    /// Reads the answer file SilentPath names into the catalogue and the run's globals,
    /// starting from the run's own answers, and logs "Erfolgreich Tovel_Auto.ini
    /// eingelesen." or "<Error> Beim einlesen von Tovel_Auto.ini". False when the file could
    /// not be read: the run goes on with the disc's own selection.
    static bool Read();
    /// Makes the answers the run's: the setup language (its texts loaded when it changes),
    /// the product languages, the bus system and the update flag.
    static void Apply(const AutoIniAnswers& answers);
};

} // namespace tovel
