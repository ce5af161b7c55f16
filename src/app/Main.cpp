#include "app/Application.h"
#include "platform/windows/QtDialogs.h"
#include "platform/windows/Theme.h"

int main(int argc, char** argv) {
    vardenix::QtDialogs dialogs;
    vardenix::RunTimeBarrier barrier(argc, argv, dialogs);
    vardenix::ApplyTheme();
    vardenix::Application application(barrier, dialogs);
    return application.Run();
}
