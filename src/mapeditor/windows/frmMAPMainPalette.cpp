// The palette of the MAP editor.

#include "files/FileNames.h"
#include "mapeditor/windows/MapEditorDialogs.h"
#include "mapeditor/windows/frmMAPMain.h"
#include "platform/Dialogs.h"
#include "platform/windows/ColorImage.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/RuntimeError.h"
#include "ui_frmMAPMain.h"

#include <QClipboard>
#include <QMimeData>
#include <QTimer>

namespace vardenix {

namespace {

constexpr const char* PaletteFilter =
    "ACT File (*.act)|*.act|PAL File (*.pal)|*.pal|Bitmap (*.bmp)|*.bmp";
// Of an entry that was looked for on the map.
constexpr int32_t LocateSeconds = 5;
constexpr int32_t LocateInterval = 100; // ms

PaletteFileKind KindOf(const FileAnswer& answer) {
    return answer.FilterIndex == 2   ? PaletteFileKind::Pal
           : answer.FilterIndex == 3 ? PaletteFileKind::Bmp
                                     : PaletteFileKind::Act;
}

std::optional<uint32_t> ColorOfClipboard() {
    const QMimeData* data = QApplication::clipboard()->mimeData();
    if (data == nullptr)
        return std::nullopt;
    if (data->hasColor())
        return ValueOf(data->colorData().value<QColor>());
    return ColorOfText(data->text().toStdString());
}

} // namespace

void frmMAPMain::ConnectPalette() {
    const PaletteGrid* grid = ui_->Command1;
    OnSignal(grid, &PaletteGrid::EntryClicked, this,
             [this](int index) { Command1_Click(index); });
    OnSignal(grid, &PaletteGrid::DetailsWanted, this,
             [this](int index) { Command1_RightClick(index); });
    OnSignal(grid, &PaletteGrid::CurrentChanged, this, [this] { ShowCurrent(); });
    OnSignal(grid, &PaletteGrid::CopyWanted, this,
             [this](int index) { CopyColor(index); });
    OnSignal(grid, &PaletteGrid::PasteWanted, this,
             [this](int index) { PasteColor(index); });
    OnSignal(ui_->Command2, &QAbstractButton::clicked, this,
             [this] { Command2_Click(); });
    OnSignal(ui_->Command3, &QAbstractButton::clicked, this,
             [this] { Command3_Click(); });
    OnSignal(ui_->Command4, &QAbstractButton::clicked, this,
             [this] { Command4_Click(); });
    OnSignal(ui_->Command5, &QAbstractButton::clicked, this,
             [this] { Command5_Click(); });
    OnSignal(timer1_, &QTimer::timeout, this, [this] { Timer1_Timer(); });
    OnSignal(ui_->Check1, &QAbstractButton::toggled, this,
             [this](bool on) { blackToColor_ = on; });
    int16_t channel = 0;
    for (const QAbstractButton* option : {ui_->Option1_0, ui_->Option1_1, ui_->Option1_2})
        OnSignal(option, &QAbstractButton::clicked, this,
                 [this, chosen = ++channel] { colorChannel_ = chosen; });
}

void frmMAPMain::UpdateEntryTip(int index) {
    ui_->Command1->SetTip(index, QString::fromStdString(EntryTip(
                                     index, state_.MapFileRecord.Palette[index])));
}

void frmMAPMain::ShowEntry(int index) {
    ui_->Command1->SetColor(index, EntryColor(state_.MapFileRecord.Palette[index]));
    UpdateEntryTip(index);
}

void frmMAPMain::ShowPalette() {
    for (int i = 0; i < PaletteSize; ++i)
        ShowEntry(i);
    ShowCurrent();
}

void frmMAPMain::ShowCurrent() {
    const int index = ui_->Command1->Current();
    ui_->lblEntry->setText(
        QString::fromStdString(EntryTip(index, state_.MapFileRecord.Palette[index])));
}

void frmMAPMain::SetColor(int index, uint32_t color) {
    const Recording made(state_.Changes, {Paper::MapFile},
                         "Colour " + std::to_string(index));
    SetEntryColor(state_.MapFileRecord.Palette[index], color);
    ShowEntry(index);
    ShowCurrent();
    MAPNeedSave();
}

void frmMAPMain::Command1_Click(int index) {
    EndFlashing();
    Trapped([this, index] {
        SetColor(index, platform_.Dialogs.Color(ui_->Command1->Color(index)));
    });
}

void frmMAPMain::Command1_RightClick(int index) {
    EndFlashing();
    MapPaletteEntry& entry = state_.MapFileRecord.Palette[index];
    const auto entered = AskEntry(index, entry, platform_.Dialogs, *this);
    if (!entered)
        return;
    const Recording made(state_.Changes, {Paper::MapFile},
                         "Colour " + std::to_string(index));
    entry = *entered;
    ShowEntry(index);
    ShowCurrent();
    MAPNeedSave();
}

void frmMAPMain::Command2_Click() {
    EndFlashing();
    Trapped([this] {
        const uint32_t color =
            platform_.Dialogs.Color(ui_->Command1->Color(ui_->Command1->Current()));
        const Recording made(state_.Changes, {Paper::MapFile}, "All colours the same");
        SetAllSameColor(state_.MapFileRecord.Palette, color);
        ShowPalette();
        MAPNeedSave();
    });
}

void frmMAPMain::Command5_Click() {
    EndFlashing();
    MapPaletteEntry* palette = state_.MapFileRecord.Palette;
    const int16_t newAlpha = AskNewAlpha(palette[ui_->Command1->Current()].Alpha, *this);
    if (newAlpha == -1)
        return;
    const Recording made(state_.Changes, {Paper::MapFile}, "Alpha of all colours");
    SetAllAlpha(state_.MapFileRecord.Palette, static_cast<uint8_t>(newAlpha));
    ShowPalette();
    MAPNeedSave();
}

void frmMAPMain::Command3_Click() {
    EndFlashing();
    Trapped([this] {
        const FileAnswer answer =
            platform_.Dialogs.SaveFile({.Title = {}, .Filter = PaletteFilter});
        SavePalette(KindOf(answer), answer.Path, state_.MapFileRecord.Palette);
        statusBar()->showMessage("Exported to " + QString::fromStdString(answer.Path));
    });
}

// That a picture cannot be read has always been passed over without a box.
void frmMAPMain::Command4_Click() {
    EndFlashing();
    Trapped([this] {
        const FileAnswer answer =
            platform_.Dialogs.OpenFile({.Title = {}, .Filter = PaletteFilter});
        const PaletteFileKind kind = KindOf(answer);
        const Recording made(state_.Changes, {Paper::MapFile},
                             "Import " + AfterLastSlash(answer.Path));
        try {
            LoadPalette(kind, answer.Path, state_.MapFileRecord.Palette);
        } catch (const RuntimeError& error) {
            if (kind != PaletteFileKind::Bmp)
                throw;
            statusBar()->showMessage(QString::fromStdString(
                "Nothing imported: " + error.Description() + ", " + error.Detail()));
            return;
        }
        ShowPalette();
        MAPNeedSave();
        statusBar()->showMessage("Imported from " + QString::fromStdString(answer.Path));
    });
}

void frmMAPMain::CopyColor(int index) {
    const uint32_t color = EntryColor(state_.MapFileRecord.Palette[index]);
    const QString text = QString::fromStdString(ColorText(color));
    auto* copied = new QMimeData;
    copied->setColorData(ColorOf(color));
    copied->setText(text);
    QApplication::clipboard()->setMimeData(copied);
    statusBar()->showMessage(text + " copied");
}

void frmMAPMain::PasteColor(int index) {
    EndFlashing();
    const auto color = ColorOfClipboard();
    if (!color) {
        statusBar()->showMessage("There is no color to paste.");
        return;
    }
    SetColor(index, *color);
    statusBar()->showMessage(QString::fromStdString(ColorText(*color)) + " pasted");
}

void frmMAPMain::LocateColor(uint8_t index) {
    show();
    raise();
    activateWindow();
    ui_->Command1->GoTo(index);
    StartFlashing(index, LocateSeconds, LocateInterval);
}

void frmMAPMain::StartFlashing(int index, int32_t seconds, int32_t interval) {
    EndFlashing();
    flash_ = vardenix::StartFlashing(static_cast<int16_t>(index),
                                     ui_->Command1->Color(index), seconds, interval);
    timer1_->start(interval);
}

void frmMAPMain::Timer1_Timer() {
    ui_->Command1->SetColor(flash_.FlashIndex, FlashTicked(flash_));
    if (!flash_.Running)
        timer1_->stop();
}

void frmMAPMain::EndFlashing() {
    timer1_->stop();
    if (const auto color = StopFlashing(flash_))
        ui_->Command1->SetColor(flash_.FlashIndex, *color);
}

} // namespace vardenix
