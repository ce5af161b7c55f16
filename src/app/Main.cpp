#include "app/Application.h"
#include "app/UpdaterWindows.h"
#include "platform/windows/QtDialogs.h"
#include "platform/windows/Theme.h"

int main(int argc, char** argv) {
    const std::string notPutBack = vardenix::PutBackInterruptedUpdate(argv);
    vardenix::QtDialogs dialogs;
    vardenix::RunTimeBarrier barrier(argc, argv, dialogs);
    vardenix::ApplyTheme();
    if (!notPutBack.empty())
        dialogs.Notice(notPutBack, "Vardenix", vardenix::BoxIcon::Critical);
    vardenix::Application application(barrier, dialogs);
    return application.Run();
}
