#include "mapeditor/windows/frmMAPMain.h"

#include "files/FileNames.h"
#include "mapeditor/MapFile.h"
#include "platform/OpenPage.h"
#include "platform/SavedOrKept.h"
#include "platform/windows/ColorImage.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "texts/KeyFilters.h"
#include "texts/RuntimeError.h"
#include "ui_frmMAPMain.h"

#include <QAction>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPixmap>
#include <QTimer>

namespace vardenix {

namespace {

constexpr const char* MapFilter = "MAP File (*.map)|*.map|All Files (*.*)|*.*";
constexpr const char* DiscardQuestion =
    "The MAP data have changed. Are you sure you want to discard the changes and reload "
    "the MAP file?";
// A number that cannot be taken, 0x00BBGGRR.
constexpr uint32_t WrongColor = 0xC0C0FF;
// The longest text of a float, and room to type.
constexpr int MaxKeys = 32;

void Tint(QWidget& box, bool wrong) {
    QPalette colors;
    if (wrong) {
        colors = PaletteOn(ColorOf(WrongColor));
        colors.setColor(QPalette::Base, ColorOf(WrongColor));
    }
    box.setPalette(colors);
}

} // namespace

frmMAPMain::frmMAPMain(ProgramState& state, const Platform& platform,
                       WorkspaceCommands& workspace)
    : state_(state), platform_(platform), workspace_(workspace),
      ui_(std::make_unique<Ui::frmMAPMain>()), timer1_(new QTimer(this)) {
    ui_->setupUi(this);
    timer1_->setObjectName("Timer1");
    ui_->Option1_0->setChecked(true);
    ui_->cmdSaveMAP->setEnabled(false);
    ConnectFile();
    ConnectNumbers();
    ConnectPalette();
    ShowTitle();
}

frmMAPMain::~frmMAPMain() = default;

void frmMAPMain::ConnectFile() {
    OnSignal(ui_->mnuOpen, &QAction::triggered, this, [this] { mnuOpen_Click(); });
    OnSignal(ui_->mnuExit, &QAction::triggered, this, [this] { close(); });
    OnSignal(ui_->cmdSaveMAP, &QAbstractButton::clicked, this,
             [this] { cmdSaveMAP_Click(); });
    OnSignal(ui_->cmdRestoreDefaults, &QAbstractButton::clicked, this,
             [this] { cmdRestoreDefaults_Click(); });
    OnSignal(ui_->cmdVardenix, &QAbstractButton::clicked, this,
             [this] { cmdVardenix_Click(); });
    OnSignal(ui_->cmdDocs, &QAbstractButton::clicked, this, [this] {
        OpenPage(platform_.Processes, platform_.Dialogs, state_.Configuration.OnlineHelp);
    });
    for (const auto& [key, button] : {std::pair(QKeySequence("Ctrl+S"), ui_->cmdSaveMAP),
                                      std::pair(QKeySequence("F1"), ui_->cmdDocs)}) {
        OnSignal(addAction(QString(), key), &QAction::triggered, button,
                 [pressed = button] { pressed->click(); });
    }
}

void frmMAPMain::ConnectNumbers() {
    for (int i = 0; i < MapFieldCount; ++i) {
        boxes_[static_cast<size_t>(i)] =
            findChild<NumberBox*>(QString("Text1_%1").arg(i));
        JoinBox(i);
    }
}

// A float that was read with an exponent can be corrected as it stands.
void frmMAPMain::JoinBox(int index) {
    NumberBox& box = Box(index);
    const QString& shown = shown_.at(static_cast<size_t>(index));
    box.TakeKeys(
        [&shown](char32_t key) {
            return KeepsFloatKey(key) || shown.contains(QChar(key));
        },
        MaxKeys);
    box.installEventFilter(this);
    OnSignal(&box, &QLineEdit::textChanged, this, [this, &box] {
        Tint(box, false);
        if (!controlsLoading_)
            MAPNeedSave();
    });
    OnSignal(&box, &QLineEdit::editingFinished, this, [&box] {
        if (box.text().isEmpty())
            box.setText("0");
    });
}

// A key that is taken counts as a change, also one that types what was there.
bool frmMAPMain::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const QString keys = static_cast<QKeyEvent*>(event)->text();
        if (keys.size() == 1 && KeepsFloatKey(keys[0].unicode()))
            MAPNeedSave();
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmMAPMain::OpenMapFile(const std::string& path) {
    const bool own = SameFile(path, state_.MAPFile);
    {
        const Recording made(state_.Changes, {Paper::MapFile},
                             "Read " + AfterLastSlash(path));
        const FileIdentity read = vardenix::OpenMapFile(path, state_.MapFileRecord);
        if (own)
            state_.MAPFileRead = read;
    }
    if (own)
        state_.Changes.Saved(Paper::MapFile);
    path_ = path;
    MAPSaved();
    ShowRecord();
}

void frmMAPMain::MapFileOpened() {
    path_ = state_.MAPFile;
    MAPSaved();
    ShowRecord();
}

void frmMAPMain::ShowRecord() {
    EndFlashing();
    controlsLoading_ = true;
    const MapFieldTexts texts = MapFieldTextsOf(state_.MapFileRecord);
    for (int i = 0; i < MapFieldCount; ++i) {
        const QString text = QString::fromStdString(texts[static_cast<size_t>(i)]);
        shown_[static_cast<size_t>(i)] = text;
        Box(i).setText(text);
        Box(i).setCursorPosition(0);
        Tint(Box(i), false);
    }
    ShowPalette();
    controlsLoading_ = false;
}

// What is typed and not taken yet stays.
void frmMAPMain::MapFileWalked() {
    EndFlashing();
    controlsLoading_ = true;
    const MapFieldTexts texts = MapFieldTextsOf(state_.MapFileRecord);
    bool typed = false;
    for (int i = 0; i < MapFieldCount; ++i) {
        QString& shown = shown_[static_cast<size_t>(i)];
        const QString text = QString::fromStdString(texts[static_cast<size_t>(i)]);
        if (text != shown)
            Box(i).setText(text);
        shown = text;
        typed = typed || Box(i).text() != text;
    }
    controlsLoading_ = false;
    ShowPalette();
    if (typed || state_.Changes.Unsaved(Paper::MapFile))
        MAPNeedSave();
    else
        MAPSaved();
}

void frmMAPMain::ShowTitle() {
    setWindowTitle(QString::fromStdString(MapEditorTitle(path_, state_.Flags.MAP)));
}

void frmMAPMain::TakeRecordBack() {
    EndFlashing(); // the flashing entry may show the inverse of its colour
    MapFieldTexts texts;
    for (int i = 0; i < MapFieldCount; ++i)
        texts[static_cast<size_t>(i)] = Box(i).text().toStdString();
    TakeMapFields(state_.MapFileRecord, texts);
    for (int i = 0; i < PaletteSize; ++i)
        SetEntryColor(state_.MapFileRecord.Palette[i], ui_->Command1->Color(i));
}

void frmMAPMain::TakeTyped() {
    if (!MAPDirty())
        return;
    try {
        const Recording made(state_.Changes, {Paper::MapFile}, "Numbers of theater.map");
        TakeRecordBack();
    } catch (const MapFieldError& error) {
        ShowWrongNumber(error.Index());
        throw;
    }
}

void frmMAPMain::FileSaved() {
    path_ = state_.MAPFile;
    MAPSaved();
    ShowRecord();
}

bool frmMAPMain::SaveMapFile() {
    {
        const Recording made(state_.Changes, {Paper::MapFile}, "Numbers of theater.map");
        TakeRecordBack();
    }
    const auto save = [this](IfChanged ifChanged) {
        state_.MAPFileRead = vardenix::SaveMapFile(state_.MAPFile, state_.MapFileRecord,
                                                   state_.MAPFileRead, ifChanged);
    };
    if (!SavedOrKept(platform_.Dialogs, save))
        return false;
    path_ = state_.MAPFile;
    state_.Changes.Saved(Paper::MapFile);
    return true;
}

void frmMAPMain::MAPNeedSave() {
    state_.Flags.MAP = true;
    ui_->cmdSaveMAP->setEnabled(true);
    ShowTitle();
}

void frmMAPMain::MAPSaved() {
    ui_->cmdSaveMAP->setEnabled(false);
    state_.Flags.MAP = false;
    ShowTitle();
}

bool frmMAPMain::MayDiscard() {
    return !state_.Flags.MAP ||
           platform_.Dialogs.MessageBox(DiscardQuestion, "Confirm", BoxIcon::Question,
                                        BoxButtons::YesNo) == BoxAnswer::Yes;
}

void frmMAPMain::Trapped(const std::function<void()>& work) {
    try {
        work();
    } catch (const RuntimeError& error) {
        if (error.Number() != ErrorNumber::Cancelled)
            platform_.Dialogs.Notice(TrapText(error), "Error...", BoxIcon::Critical);
    }
}

// Saving goes to MAPFile all the same, so another file's values are changes of that.
void frmMAPMain::mnuOpen_Click() {
    Trapped([this] {
        const std::string path =
            platform_.Dialogs
                .OpenFile(
                    {.Title = {}, .Filter = MapFilter, .InitialPath = state_.MAPFile})
                .Path;
        if (!MayDiscard())
            return;
        OpenMapFile(path);
        if (!SameFile(path, state_.MAPFile))
            MAPNeedSave();
        statusBar()->clearMessage();
    });
}

void frmMAPMain::cmdSaveMAP_Click() {
    Trapped([this] {
        try {
            if (!SaveMapFile())
                return;
        } catch (const MapFieldError& error) {
            ShowWrongNumber(error.Index());
            throw;
        }
        MAPSaved();
        ShowRecord();
        statusBar()->showMessage("Saved.");
    });
}

void frmMAPMain::ShowWrongNumber(int index) {
    Tint(Box(index), true);
    Box(index).setFocus(Qt::OtherFocusReason);
}

void frmMAPMain::cmdRestoreDefaults_Click() {
    if (!MayDiscard())
        return;
    Trapped([this] {
        OpenMapFile(state_.MAPFile);
        statusBar()->showMessage("Read again.");
    });
}

void frmMAPMain::cmdVardenix_Click() {
    EndFlashing();
    workspace_.ShowWorkspace();
    hide();
}

void frmMAPMain::ShowMap(const QImage& picture) {
    ui_->picMap->setPixmap(QPixmap::fromImage(picture));
}

void frmMAPMain::hideEvent(QHideEvent* event) {
    EndFlashing();
    QMainWindow::hideEvent(event);
}

void frmMAPMain::closeEvent(QCloseEvent* event) {
    if (state_.Exiting)
        return;
    event->ignore();
    EndFlashing();
    workspace_.LeaveProgram();
}

} // namespace vardenix

#include "moc_frmMAPMain.cpp"
