#include "theater/windows/Sound.h"

#include "platform/FileNames.h"
#include "platform/Processes.h"
#include "platform/RuntimeError.h"

#include <QFile>

namespace vardenix {

void PlaySoundResource(const std::string& name, const std::string& folder,
                       Processes& processes) {
    const QString file =
        QString::fromStdString(TextOfPath(RealPath(folder + name + ".wav")));
    if (!QFile::exists(file) &&
        !QFile::copy(":/" + QString::fromStdString(name) + ".wav", file))
        return;
    const QString quoted = "'" + QString(file).replace("'", "'\\''") + "'";
    try {
        processes.Start(("for player in pw-play paplay aplay; do "
                         "command -v $player >/dev/null && exec $player " +
                         quoted + "; done")
                            .toStdString());
    } catch (const RuntimeError&) {
        return;
    }
}

} // namespace vardenix
