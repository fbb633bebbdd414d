#pragma once
// Record mode at the end of the component page: the answers this run has gathered are
// written to the answer file, and the person is told. The component page calls Record()
// on Continue when RecordMode is set.
#include "install/clsSilentMode.h"

namespace tovel {

class clsRecordMode {
public:
    /// The run's answers: the disc's title, the program's version, the setup language, the
    /// identification, drive and bus the pages set, the chosen product languages, and new
    /// installation unless update was chosen. User, company and drive are the first
    /// product's: the identification and destination pages give every product the same.
    [[nodiscard]] static AutoIniAnswers Answers();
    /// Writes "Tovel_Auto.ini" to the Windows folder from Answers() and the catalogue, then
    /// shows the message that the recording is finished. Returns false, after a log line and
    /// without the message, when the file could not be written.
    static bool Record();
};

} // namespace tovel
