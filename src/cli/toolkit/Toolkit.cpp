// The library vardenix-toolkit: the map window's surface for vardenix-cli, which opens it
// when a map has something that the toolkit draws.
#include "mapview/windows/QtDrawingSurface.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>
#include <string>

namespace vardenix {

namespace {

// The toolkit wants to be started for texts; no display is asked for.
class Toolkit {
public:
    explicit Toolkit(bool texts) {
        if (!texts)
            return;
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        // What it has to say about a session of its own is nothing to who runs a command.
        qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString&) {});
        application_ = std::make_unique<QGuiApplication>(count_, arguments_);
    }

private:
    std::string name_ = "vardenix-cli";
    char* arguments_[2] = {name_.data(), nullptr};
    int count_ = 1;
    std::unique_ptr<QGuiApplication> application_;
};

// In this order: the surface's fonts go before the toolkit does.
class ToolkitSurface : private Toolkit, public QtDrawingSurface {
public:
    ToolkitSurface(int32_t side, bool texts) : Toolkit(texts) { Resize(side, side); }
};

} // namespace

} // namespace vardenix

extern "C" vardenix::DrawingSurface* VARDENIX_TOOLKIT_MAKER(int32_t side, bool texts) {
    return new vardenix::ToolkitSurface(side, texts);
}
