#include "app/Application.h"
#include "app/Arguments.h"
#include "app/Updater.h"
#include "platform/windows/QtDialogs.h"
#include "platform/windows/Theme.h"

int main(int argc, char** argv) {
    if (vardenix::OnlyAsks(argc, argv)) {
        const QCoreApplication withoutDisplay(argc, argv);
        return TellOf(vardenix::ReadArguments(QCoreApplication::arguments()));
    }
    const std::string notPutBack = vardenix::PutBackInterruptedUpdate(argv);
    vardenix::QtDialogs dialogs;
    vardenix::RunTimeBarrier barrier(argc, argv, dialogs);
    const vardenix::Arguments arguments =
        vardenix::ReadArguments(QCoreApplication::arguments());
    if (!arguments.Told.empty())
        return TellOf(arguments);
    vardenix::ApplyTheme();
    if (!notPutBack.empty())
        dialogs.Notice(notPutBack, "Vardenix", vardenix::BoxIcon::Critical);
    vardenix::Application application(barrier, dialogs);
    dialogs.Details = [&application] { return application.Details(); };
    return application.Run(arguments.Theater);
}
