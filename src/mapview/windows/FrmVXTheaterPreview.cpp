#include "mapview/windows/FrmVXTheaterPreview.h"

#include "files/StagedFile.h"
#include "mapview/PreviewHeights.h"
#include "platform/windows/ColorImage.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "texts/RuntimeError.h"
#include "ui_FrmVXTheaterPreview.h"

#include <QBuffer>
#include <QCloseEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <QStyle>
#include <QTimerEvent>

#include <algorithm>
#include <utility>

namespace vardenix {

namespace {

constexpr int GapAboveCommand1 = PixelsOfTwips(90); // and as much below
// A picture of a small theater would leave no room for the title.
constexpr int LeastLetters = 42;
// The map has come to rest when it has not been painted for so long; then so many posts
// are looked at in one turn.
constexpr int SweepAfter = 300; // ms
constexpr int32_t PostsOfTurn = 1 << 18;

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
    ui_->ground->setPalette(QPalette(PictureGround()));
    ui_->ground->setBackgroundRole(QPalette::Window);
    // A small picture must not grow for scroll bars that it has no use for.
    ui_->ground->setMinimumSize(1, 1);
    OnSignal(ui_->Command1, &QAbstractButton::clicked, this,
             [this] { Command1_Click(); });
    OnSignal(ui_->Picture1, &StretchedPicture::Pressed, this,
             [this](QPoint pixel) { Picture1_MouseDown(pixel); });
    OnSignal(ui_->Picture1, &StretchedPicture::Dragged, this,
             [this](QPoint pixel) { Picture1_MouseMove(pixel); });
}

FrmVXTheaterPreview::~FrmVXTheaterPreview() = default;

void FrmVXTheaterPreview::PreviewChanged() {
    ui_->Picture1->SetPicture(ImageOf(state_.Preview.Pixels, state_.Preview.Side));
    const int side = PreviewSide(state_.Preview.Side);
    ui_->Picture1->setFixedSize(side, side);
    FitRoundPicture();
}

void FrmVXTheaterPreview::MakeViewPort() {
    UpdatePart({view_.MapLeftX, view_.MapBottomY}, view_.ViewColumns(), view_.ViewRows());
    sweptRows_ = 0;
    sweep_.start(SweepAfter, this);
    ShowBoxes();
}

void FrmVXTheaterPreview::ShowBoxes() {
    const int side = ui_->Picture1->height();
    const ViewPort port =
        vardenix::MakeViewPort(view_, side, PreviewScale(side, state_.Preview.Side));
    std::vector<PreviewBox> boxes{port.View};
    if (port.HasExport)
        boxes.push_back(port.Export);
    ui_->Picture1->SetBoxes(std::move(boxes));
}

void FrmVXTheaterPreview::UpdatePart(PostPlace lowerLeft, int32_t across, int32_t down) {
    QImage& picture = ui_->Picture1->Picture();
    const RasterView pixels{reinterpret_cast<uint32_t*>(picture.bits()), picture.width(),
                            picture.height(), picture.bytesPerLine() / 4};
    const Configuration& settings = state_.Configuration;
    if (UpdateHeights(state_.Terrain,
                      {settings.PreviewSeaColor, settings.PreviewLevelColors}, lowerLeft,
                      across, down, pixels,
                      {view_.ShowRelief ? view_.ReliefStrength : 0,
                       view_.ShowContours ? view_.ContourStep : 0}))
        ui_->Picture1->update();
}

// Posts anywhere may have changed. They are looked at in turns that nobody notices, and
// not while files are read or written.
void FrmVXTheaterPreview::timerEvent(QTimerEvent* event) {
    if (event->timerId() != sweep_.timerId())
        return QWidget::timerEvent(event);
    if (view_.ScrollBusy || state_.AbortPaint)
        return;
    const int32_t width = std::max(state_.Terrain.MapWidth, 1);
    const int32_t rows = std::max(PostsOfTurn / width, 1);
    UpdatePart({0, sweptRows_}, width, rows);
    sweptRows_ += rows;
    if (sweptRows_ >= width)
        sweep_.stop();
    else
        sweep_.start(0, this);
}

void FrmVXTheaterPreview::Picture1_MouseDown(QPoint pixel) {
    last_.reset();
    Picture1_MouseMove(pixel);
}

void FrmVXTheaterPreview::Picture1_MouseMove(QPoint pixel) {
    const PostPlace position = PreviewClick(pixel.x(), pixel.y(), ui_->Picture1->height(),
                                            state_.Terrain.MapWidth);
    if (scrolling_)
        wanted_ = position;
    else if (!view_.ScrollBusy && (!last_ || !(*last_ == position)))
        ScrollTo(position);
}

// The pointer may be drawn on while events are let through; the map ends up where it was
// drawn last.
void FrmVXTheaterPreview::ScrollTo(PostPlace position) {
    const QScopedValueRollback scrolling(scrolling_, true);
    wanted_ = position;
    while (wanted_) {
        last_ = *std::exchange(wanted_, std::nullopt);
        commands_.ScrollTo(last_->X, last_->Y);
    }
}

void FrmVXTheaterPreview::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    FitPicture();
}

void FrmVXTheaterPreview::FitPicture() {
    layout()->activate();
    const QSize room = ui_->ground->maximumViewportSize();
    const int side = PreviewSideWithin(state_.Preview.Side, room.width(), room.height());
    if (ui_->Picture1->width() == side)
        return;
    ui_->Picture1->setFixedSize(side, side);
    ShowBoxes();
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
    setMinimumSize(least, below + std::min(below, picture.height()));
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
    const QByteArray bytes = BitmapOf(ui_->Picture1->Picture());
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

#include "moc_FrmVXTheaterPreview.cpp"
