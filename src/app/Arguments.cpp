#include "app/Arguments.h"

#include "program/ProgramVersion.h"

#include <QCommandLineParser>
#include <QDir>

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace vardenix {

bool OnlyAsks(int argc, char** argv) {
    return std::any_of(argv + 1, argv + argc, [](std::string_view word) {
        return word == "-h" || word == "--help" || word == "-v" || word == "--version";
    });
}

namespace {

// A file manager hands over the level 2 file that was clicked on: FOLDER/terrain/NAME.L2.
QString TheaterOf(const QString& named) {
    QString path = QDir().absoluteFilePath(named);
    if (!path.endsWith(".l2", Qt::CaseInsensitive))
        return path;
    return QDir::cleanPath(path + "/../..");
}

} // namespace

Arguments ReadArguments(const QStringList& words) {
    QCommandLineParser parser;
    parser.setApplicationDescription("Editor for the terrain of theaters.");
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addPositionalArgument("FOLDER",
                                 "The folder of a theater, or its L2 file, which is "
                                 "opened at once; or the folder of "
                                 "an install, whose theaters are listed.",
                                 "[FOLDER]");
    Arguments arguments;
    const auto complain = [&](const QString& fault) {
        arguments.Told =
            ("vardenix: " + fault + "\n\n" + parser.helpText()).toStdString();
        arguments.Wrong = true;
    };
    const bool understood = parser.parse(words);
    const QStringList folders = parser.positionalArguments();
    if (!understood)
        complain(parser.errorText());
    else if (parser.isSet(help))
        arguments.Told = parser.helpText().toStdString();
    else if (parser.isSet(version))
        arguments.Told = "vardenix " + ProgramVersion() + "\n";
    else if (folders.size() > 1)
        complain("one folder can be opened at a time");
    else if (folders.size() == 1 && folders[0].isEmpty())
        complain("the name of the folder is empty");
    else if (folders.size() == 1)
        arguments.Theater = TheaterOf(folders[0]).toStdString();
    return arguments;
}

int TellOf(const Arguments& arguments) {
    std::FILE* const stream = arguments.Wrong ? stderr : stdout;
    const bool told =
        std::fputs(arguments.Told.c_str(), stream) >= 0 && std::fflush(stream) == 0;
    if (arguments.Wrong)
        return 2;
    return told ? 0 : 3;
}

} // namespace vardenix
