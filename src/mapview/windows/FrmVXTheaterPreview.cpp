#include "mapview/windows/FrmVXTheaterPreview.h"

#include "platform/RuntimeError.h"
#include "platform/StagedFile.h"
#include "platform/windows/ColorImage.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "ui_FrmVXTheaterPreview.h"

#include <QBuffer>
#include <QCloseEvent>
#include <QScreen>
#include <QStyle>

#include <algorithm>

namespace vardenix {

namespace {

constexpr int GapAboveCommand1 = PixelsOfTwips(90); // and as much below
// A picture of a small theater would leave no room for the title.
constexpr int LeastLetters = 42;

QByteArray BitmapOf(const QImage& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.convertToFormat(QImage::Format_RGB888).save(&buffer, "BMP"))
        throw RuntimeError(ErrorNumber::InvalidPicture);
    return bytes;
}

} // namespace

FrmVXTheaterPreview::FrmVXTheaterPreview(const ProgramState& state, const MapView& view,
                                         Dialogs& dialogs, WorkspaceCommands& commands)
    : state_(state), view_(view), dialogs_(dialogs), commands_(commands),
      ui_(std::make_unique<Ui::FrmVXTheaterPreview>()) {
    ui_->setupUi(this);
    ui_->row->setContentsMargins(GapAboveCommand1, GapAboveCommand1, GapAboveCommand1,
                                 GapAboveCommand1);
    ui_->ground->setBackgroundRole(QPalette::Mid);
    OnSignal(ui_->Command1, &QAbstractButton::clicked, this,
             [this] { Command1_Click(); });
    OnSignal(ui_->Picture1, &StretchedPicture::Pressed, this,
             [this](QPoint pixel) { Picture1_MouseDown(pixel); });
}

FrmVXTheaterPreview::~FrmVXTheaterPreview() = default;

void FrmVXTheaterPreview::PreviewChanged() {
    picture0_ = ImageOf(state_.Preview.Pixels, state_.Preview.Side);
    ui_->Picture1->SetPicture(picture0_);
    const int side = PreviewSide(state_.Preview.Side);
    ui_->Picture1->setFixedSize(side, side);
    FitRoundPicture();
}

void FrmVXTheaterPreview::MakeViewPort() {
    const ViewPort port = vardenix::MakeViewPort(view_, ui_->Picture1->height());
    std::vector<PreviewBox> boxes{port.View};
    if (port.HasExport)
        boxes.push_back(port.Export);
    ui_->Picture1->SetBoxes(std::move(boxes));
}

void FrmVXTheaterPreview::Picture1_MouseDown(QPoint pixel) {
    if (view_.ScrollBusy)
        return;
    const ViewPosition position = PreviewClick(
        pixel.x(), pixel.y(), ui_->Picture1->height(), state_.Terrain.MapWidth);
    commands_.ScrollTo(position.X, position.Y);
}

void FrmVXTheaterPreview::FitRoundPicture() {
    // The whole window is told to be 180 twips wider and 600 twips and a button higher
    // than the picture; that is what its frame, title and gaps take.
    const int least = fontMetrics().averageCharWidth() * LeastLetters;
    const QSize picture = ui_->Picture1->size();
    const int below = ui_->row->sizeHint().height();
    const QSize room = screen()->availableSize() * 9 / 10;
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    QSize wanted(std::max(picture.width(), least), picture.height() + below);
    if (wanted.height() > room.height())
        wanted.rwidth() += scrollBar;
    if (wanted.width() > room.width())
        wanted.rheight() += scrollBar;
    setMinimumSize(least, below * 2);
    resize(wanted.boundedTo(room));
}

void FrmVXTheaterPreview::Command1_Click() {
    FileAnswer answer;
    try {
        answer = dialogs_.SaveFile({.Title = {}, .Filter = "Bitmap files (*.bmp)|*.bmp"});
    } catch (const RuntimeError& error) {
        if (error.Number() == ErrorNumber::Cancelled)
            return;
        throw;
    }
    const QByteArray bytes = BitmapOf(picture0_);
    StagedFile file(answer.Path);
    file.WriteText({bytes.constData(), static_cast<size_t>(bytes.size())});
    file.Commit();
}

void FrmVXTheaterPreview::closeEvent(QCloseEvent* event) {
    if (state_.Exiting)
        return;
    event->ignore();
    hide();
    commands_.WindowHidden("chkShowTheater");
}

} // namespace vardenix
