#include "program/windows/Sound.h"

#include "files/FileNames.h"
#include "platform/Processes.h"
#include "texts/RuntimeError.h"

#include <QFile>

namespace vardenix {

void PlaySoundResource(const std::string& name, const std::string& folder,
                       Processes& processes) {
    const QString file =
        QString::fromStdString(TextOfPath(RealPath(folder + name + ".wav")));
    if (!QFile::exists(file) &&
        !QFile::copy(":/" + QString::fromStdString(name) + ".wav", file))
        return;
    for (const char* player : {"pw-play ", "paplay ", "aplay "}) {
        try {
            processes.Start(player + QuotedWord(file.toStdString()));
            return;
        } catch (const RuntimeError&) {
            // Another one may be there; silence otherwise.
            continue;
        }
    }
}

} // namespace vardenix
