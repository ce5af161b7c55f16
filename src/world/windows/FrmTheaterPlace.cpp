#include "world/windows/FrmTheaterPlace.h"

#include "platform/windows/PinkBox.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/Numbers.h"
#include "ui_FrmTheaterPlace.h"
#include "world/Degrees.h"

#include <QLocale>

#include <cmath>
#include <limits>

namespace vardenix {

namespace {

// Not a number for any other text.
double PlaceNumberIn(const QLineEdit& box) {
    bool good = false;
    const double value = QLocale::c().toDouble(box.text().trimmed(), &good);
    return good ? value : std::numeric_limits<double>::quiet_NaN();
}

void ShowNumber(QLineEdit& box, double value) {
    box.setText(QString::fromStdString(ShortestText(value)));
    box.setCursorPosition(0);
}

} // namespace

FrmTheaterPlace::FrmTheaterPlace(const Terrain& terrain)
    : terrain_(terrain), ui_(std::make_unique<Ui::FrmTheaterPlace>()) {
    ui_->setupUi(this);
    for (QLineEdit* box :
         {ui_->txtSystem, ui_->txtLeft, ui_->txtBottom, ui_->txtPostWidth,
          ui_->txtPostHeight, ui_->txtRight, ui_->txtTop})
        OnSignal(box, &QLineEdit::textChanged, this, [this] { Follow(); });
    OnSignal(ui_->optCorner, &QAbstractButton::toggled, this, [this] { Follow(); });
    OnSignal(ui_->cmdCorners, &QAbstractButton::clicked, this,
             [this] { emit CornersWanted(); });
    OnSignal(ui_->cmdSavePlace, &QAbstractButton::clicked, this,
             [this] { emit SaveWanted(); });
    OnSignal(ui_->cmdImportPlace, &QAbstractButton::clicked, this,
             [this] { emit ImportWanted(); });
    OnSignal(ui_->cmdExportPlace, &QAbstractButton::clicked, this,
             [this] { emit ExportWanted(); });
    OnSignal(ui_->cmdClose, &QAbstractButton::clicked, this, [this] { hide(); });
    Follow();
}

FrmTheaterPlace::~FrmTheaterPlace() = default;

void FrmTheaterPlace::ShowPlace(const TheaterPlace& place, const QString& source) {
    ui_->txtSystem->setText(QString::fromStdString(place.System));
    ui_->txtSystem->setCursorPosition(0);
    const int32_t last = terrain_.MapWidth - 1;
    const PlacedBox edges = EdgesOf(place, {0, 0, last, last});
    ShowNumber(*ui_->txtLeft, place.Left);
    ShowNumber(*ui_->txtBottom, place.Bottom);
    ShowNumber(*ui_->txtPostWidth, place.PostWidth);
    ShowNumber(*ui_->txtPostHeight, place.PostHeight);
    ShowNumber(*ui_->txtRight, edges.Right);
    ShowNumber(*ui_->txtTop, edges.Top);
    ui_->lblSource->setText(source);
}

TheaterPlace FrmTheaterPlace::Place() const {
    TheaterPlace place{ui_->txtSystem->text().trimmed().toStdString(),
                       PlaceNumberIn(*ui_->txtLeft), PlaceNumberIn(*ui_->txtBottom)};
    if (ui_->optCorner->isChecked()) {
        place.PostWidth =
            (PlaceNumberIn(*ui_->txtRight) - place.Left) / terrain_.MapWidth;
        place.PostHeight =
            (PlaceNumberIn(*ui_->txtTop) - place.Bottom) / terrain_.MapWidth;
        return place;
    }
    place.PostWidth = PlaceNumberIn(*ui_->txtPostWidth);
    place.PostHeight = ui_->txtPostHeight->text().trimmed().isEmpty()
                           ? place.PostWidth
                           : PlaceNumberIn(*ui_->txtPostHeight);
    return place;
}

void FrmTheaterPlace::ShowCorners(const std::array<GeographicPoint, 4>& corners) {
    NameCorners([&corners](size_t i) { return DegreesWords(corners.at(i)); });
}

template <typename Words>
void FrmTheaterPlace::NameCorners(Words words) {
    const std::array labels{ui_->lblSouthWest, ui_->lblSouthEast, ui_->lblNorthWest,
                            ui_->lblNorthEast};
    const std::array names{tr("South west"), tr("South east"), tr("North west"),
                           tr("North east")};
    for (size_t i = 0; i < labels.size(); ++i)
        labels.at(i)->setText(names.at(i) + ":\n" + QString::fromStdString(words(i)));
}

void FrmTheaterPlace::Tell(const QString& words) { ui_->lblTold->setText(words); }

// What was told of another place holds no longer.
void FrmTheaterPlace::Follow() {
    const bool corner = ui_->optCorner->isChecked();
    const auto follow = [](QLineEdit& box, bool used, bool mayBeEmpty = false) {
        box.setEnabled(used);
        const bool empty = box.text().trimmed().isEmpty();
        SetPink(box, used && std::isnan(PlaceNumberIn(box)) && !(empty && mayBeEmpty));
    };
    follow(*ui_->txtLeft, true);
    follow(*ui_->txtBottom, true);
    follow(*ui_->txtPostWidth, !corner);
    follow(*ui_->txtPostHeight, !corner, true);
    follow(*ui_->txtRight, corner);
    follow(*ui_->txtTop, corner);
    NameCorners([](size_t) { return std::string(); });
    Tell({});
}

} // namespace vardenix

#include "moc_FrmTheaterPlace.cpp"
