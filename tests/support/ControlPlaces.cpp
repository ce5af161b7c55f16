// Prints where the controls of the control panel lie, "name left top width height" in
// pixels of the window, when it has the size that is given: tests that press real buttons
// find them so, wherever a layout puts them. Nothing comes up on the screen.
#include "platform/windows/Theme.h"
#include "windows/FrmVXMainTest.h"

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    using namespace vardenix;
    const QApplication application(argc, argv);
    if (argc != 3)
        return 2;
    ApplyTheme();
    ProgramState state;
    MapView view;
    tests::FakePlatform platform;
    tests::ToldWorkspace workspace;
    tests::ToldCommands commands(workspace.Story);
    FrmVXMain window(state, view, platform.All, workspace, commands);
    window.Form_Load("places");
    window.setAttribute(Qt::WA_DontShowOnScreen);
    window.show();
    window.resize(std::atoi(argv[1]), std::atoi(argv[2]));
    QCoreApplication::processEvents();
    for (const QWidget* control : window.findChildren<QWidget*>()) {
        if (control->objectName().isEmpty() || control->objectName().startsWith("qt_"))
            continue;
        const QPoint corner = control->mapTo(&window, QPoint(0, 0));
        std::cout << control->objectName().toStdString() << ' ' << corner.x() << ' '
                  << corner.y() << ' ' << control->width() << ' ' << control->height()
                  << '\n';
    }
}
