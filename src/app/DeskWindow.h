#pragma once

#include "app/WorkspaceWindows.h"

#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <string>
#include <vector>

class QDockWidget;
class QMenuBar;

namespace vardenix {

class EdgeHandle;

// A window of the workspace that comes and goes with its box on the panel.
struct DeskPart {
    QWidget* Window = nullptr;
    const char* Box = "";
    Qt::DockWidgetArea Area = Qt::LeftDockWidgetArea; // where it stands at first
    bool Tab = true;                                  // beside the others of its area
};

// All parts of the workspace in one window: the map in the middle, the others docked
// round it, the panel's menus on top. It lives as long as the user wants it so.
class DeskWindow : public QMainWindow {
public:
    // All are borrowed. `hidden` is called with the box of a part that was closed;
    // `parts` are those beside panel and map. `layout` is what Layout has told an earlier
    // time.
    DeskWindow(WorkspaceWindows& windows, const std::vector<DeskPart>& parts,
               std::function<void(const char* box)> hidden, const std::string& layout);
    // The parts are windows of their own again, not shown yet.
    ~DeskWindow() override;

    // The panel is seen, or leaves its room to the map.
    bool ShowsPanel() const;
    void ShowPanel(bool shown);
    // At the map's edge: drawn it makes the parts beside the map wider or narrower; what
    // a click does is the caller's.
    EdgeHandle& Handle() { return *handle_; }

    // Where it stands and how its parts lie, in letters and digits of the toolkit's own.
    std::string Layout() const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void TakeMap();
    // One without a box stays; and it scrolls by itself.
    void Dock(const DeskPart& part);
    void ShowTitle();
    void Restore(const std::string& layout);
    void RestoreParts();
    void TakeKeptRoom(QSize room);
    // As on a first start: the panel above the tabs of the others.
    void Arrange(const std::vector<DeskPart>& parts);
    void ShareRoom();

    WorkspaceWindows& windows_;
    std::function<void(const char* box)> hidden_;
    QMenuBar* menus_;
    struct Docked {
        QDockWidget* Dock;
        QPointer<QWidget> Window;
        const char* Box;
        QSize Size; // of its own window
    };
    std::vector<Docked> docked_;  // the panel first
    QDockWidget* tabs_ = nullptr; // the first of them
    EdgeHandle* handle_ = nullptr;
    bool arranged_ = true; // as the user has left it
    QByteArray kept_;      // of the parts, until the window has its room
};

// Shows or hides a part, whether it is a window of its own or docked.
void SetShown(QWidget& part, bool shown);

} // namespace vardenix
