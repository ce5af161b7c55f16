#include "platform/windows/QtDialogs.h"

#include "files/FileNames.h"
#include "platform/windows/ColorButton.h"
#include "platform/windows/ColorImage.h"
#include "platform/windows/FileFilter.h"
#include "texts/RuntimeError.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QGroupBox>
#include <QLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

namespace vardenix {

namespace {

// Words longer than this may be broken after a slash, so that a path never makes a box
// wider than the screen.
constexpr int LongWord = 60;

QString Breakable(const std::string& text) {
    const QString whole = QString::fromStdString(text);
    QString broken;
    for (const QString& line : whole.split('\n')) {
        QStringList words = line.split(' ');
        for (QString& word : words) {
            if (word.size() <= LongWord)
                continue;
            word.replace("/", "/\u200B");
            word.replace("\\", "\\\u200B");
        }
        broken += (broken.isNull() ? "" : "\n") + words.join(' ');
    }
    return broken;
}

QMessageBox::Icon IconOf(BoxIcon icon) {
    switch (icon) {
    case BoxIcon::Information:
        return QMessageBox::Information;
    case BoxIcon::Question:
        return QMessageBox::Question;
    case BoxIcon::Warning:
        return QMessageBox::Warning;
    case BoxIcon::Critical:
        return QMessageBox::Critical;
    case BoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

[[noreturn]] void Cancel() { throw RuntimeError(ErrorNumber::Cancelled); }

// A folder that may not be looked at any more keeps nobody from choosing another.
bool CanBeShown(const std::string& folder) {
    try {
        return FolderExists(folder);
    } catch (const RuntimeError&) {
        return false;
    }
}

// The nearest folder at or above a path that is there; nothing when that is no nearer
// than the root of the disk.
QString NearestFolder(const std::string& path) {
    std::string folder = path;
    while (!folder.empty() && !CanBeShown(folder)) {
        while (folder.ends_with('/') || folder.ends_with('\\'))
            folder.pop_back();
        folder = UpToLastSlash(folder);
    }
    const QString found =
        folder.empty() ? QString() : QString::fromStdString(TextOfPath(RealPath(folder)));
    return QDir(found).isRoot() ? QString() : found;
}

// Begins at the folder of `initial`, or the nearest one above it that is there; else
// where the last dialog ended, or in the user's own folder.
void BeginAt(QFileDialog& dialog, const std::string& initial, const QString& last) {
    QString folder = NearestFolder(initial);
    if (folder.isEmpty())
        folder = NearestFolder(last.toStdString());
    dialog.setDirectory(folder.isEmpty() ? QDir::homePath() : folder);
    const bool isFolder = initial.empty() || CanBeShown(initial);
    if (!isFolder && CanBeShown(UpToLastSlash(initial)))
        dialog.selectFile(QString::fromStdString(AfterLastSlash(ShownPath(initial))));
}

class FileDialog : public QFileDialog {
public:
    FileDialog(const FileQuestion& question, const QString& lastFolder)
        : QFileDialog(QApplication::activeWindow()),
          filters_(ParseFilter(question.Filter)) {
        if (!question.Title.empty())
            setWindowTitle(QString::fromStdString(question.Title));
        setOption(HideNameFilterDetails);
        QStringList texts;
        for (const FileFilter& filter : filters_)
            texts += filter.ToolkitText();
        if (!texts.isEmpty()) {
            setNameFilters(texts);
            const QString initial = QString::fromStdString(question.InitialPath);
            selectNameFilter(texts.at(FilterOf(initial, filters_, 0)));
        }
        BeginAt(*this, question.InitialPath, lastFolder);
    }

    void CompleteNames() {
        // The name is completed before the question about a file that is there.
        setOption(DontConfirmOverwrite);
        setDefaultSuffix(Extension());
        connect(this, &QFileDialog::filterSelected, this, [this] {
            setDefaultSuffix(Extension());
            GiveNameItsExtension();
        });
    }

    // The toolkit opens nothing that its filter hides.
    void FollowNames() {
        if (auto* box = findChild<QLineEdit*>("fileNameEdit"))
            connect(box, &QLineEdit::textEdited, this, [this](const QString& name) {
                const int wanted = FilterOf(name, filters_, Chosen());
                if (wanted != Chosen())
                    selectNameFilter(filters_[wanted].ToolkitText());
            });
    }

    FileAnswer Answer() const {
        const QString picked = selectedFiles().value(0);
        const QString name = acceptMode() == AcceptSave
                                 ? CompletedName(picked, filters_, Chosen())
                                 : picked;
        return {name.toStdString(), FilterOf(name, filters_, Chosen()) + 1};
    }

private:
    // From 0.
    int Chosen() const {
        // With or without the patterns, as the dialog in use has it.
        const QString chosen = selectedNameFilter();
        for (qsizetype i = 0; i < filters_.size(); ++i)
            if (chosen == filters_[i].ToolkitText() || chosen == filters_[i].Description)
                return static_cast<int>(i);
        return 0;
    }
    QString Extension() const { return filters_.value(Chosen()).Extension(); }

    // The toolkit has just put the letters of the pattern, in both cases, in place of the
    // name's extension.
    void GiveNameItsExtension() const {
        auto* box = findChild<QLineEdit*>("fileNameEdit");
        if (box == nullptr)
            return;
        const QString name = box->text();
        const qsizetype pattern = name.lastIndexOf(".[");
        if (pattern >= 0 && !Extension().isEmpty())
            box->setText(name.left(pattern + 1) + Extension());
    }

    QList<FileFilter> filters_;
};

QFont FontOf(const FontChoice& choice) {
    QFont font(QString::fromStdString(choice.Name));
    font.setPointSizeF(choice.Size > 0 ? choice.Size : FontChoice().Size);
    font.setBold(choice.Bold);
    font.setItalic(choice.Italic);
    font.setStrikeOut(choice.Strikethrough);
    font.setUnderline(choice.Underline);
    return font;
}

// Shows the dialog. What the user leaves as it is shown stays as it was, also where the
// toolkit shows something else: the name of a font that this machine does not have, a
// size that it has not.
FontChoice ChosenFont(QFontDialog& dialog, const FontChoice& current) {
    const QFont shown = dialog.currentFont();
    if (dialog.exec() != QDialog::Accepted)
        Cancel();
    const QFont font = dialog.selectedFont();
    FontChoice choice = current;
    if (font.family() != shown.family())
        choice.Name = font.family().toStdString();
    if (font.pointSizeF() != shown.pointSizeF())
        choice.Size = static_cast<float>(font.pointSizeF());
    choice.Bold = font.bold();
    choice.Italic = font.italic();
    choice.Strikethrough = font.strikeOut();
    choice.Underline = font.underline();
    return choice;
}

// Below the boxes for strikeout and underline.
void AddToEffects(QFontDialog& dialog, QWidget& control) {
    const auto groups = dialog.findChildren<QGroupBox*>();
    QLayout* place = groups.isEmpty() ? dialog.layout() : groups.first()->layout();
    place->addWidget(&control);
}

void Dress(QMessageBox& box, const std::string& text, const std::string& title,
           BoxIcon icon) {
    box.setIcon(IconOf(icon));
    box.setWindowTitle(title.empty() ? "Vardenix" : QString::fromStdString(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(Breakable(text));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
}

} // namespace

void QtDialogs::OfferDetails(QMessageBox& box, const std::string& text) const {
    if (box.icon() != QMessageBox::Critical)
        return;
    QPushButton* copy = box.addButton("Copy &details", QMessageBox::ActionRole);
    copy->setToolTip("For a report: this text, version, system and what was done last");
    // It answers nothing, so the box stays.
    copy->disconnect();
    QObject::connect(copy, &QPushButton::clicked, &box, [this, text, copy, &box] {
        std::string details = box.windowTitle().toStdString() + "\n" + text + "\n";
        if (Details)
            details += "\n" + Details();
        QApplication::clipboard()->setText(QString::fromStdString(details));
        copy->setText("Details copied");
    });
}

BoxAnswer QtDialogs::MessageBox(const std::string& text, const std::string& title,
                                BoxIcon icon, BoxButtons buttons) {
    QMessageBox box(QApplication::activeWindow());
    Dress(box, text, title, icon);
    OfferDetails(box, text);
    switch (buttons) {
    case BoxButtons::Ok:
        box.setStandardButtons(QMessageBox::Ok);
        box.setDefaultButton(QMessageBox::Ok);
        box.setEscapeButton(QMessageBox::Ok);
        box.exec();
        return BoxAnswer::Ok;
    case BoxButtons::YesNo:
    case BoxButtons::YesUnlessNo: {
        // What cannot be taken back, work lost or a file replaced, takes a choice.
        const auto harmless =
            buttons == BoxButtons::YesNo ? QMessageBox::No : QMessageBox::Yes;
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(harmless);
        box.setEscapeButton(harmless);
        return box.exec() == QMessageBox::Yes ? BoxAnswer::Yes : BoxAnswer::No;
    }
    case BoxButtons::YesNoCancel: {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        const int pressed = box.exec();
        return pressed == QMessageBox::Yes  ? BoxAnswer::Yes
               : pressed == QMessageBox::No ? BoxAnswer::No
                                            : BoxAnswer::Cancel;
    }
    case BoxButtons::YesNoSaveAll: {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        const QPushButton* save =
            box.addButton("&Save all and exit", QMessageBox::ActionRole);
        // The usual green tick would make losing look right.
        for (const auto button : {QMessageBox::Yes, QMessageBox::No})
            box.button(button)->setIcon({});
        box.setDefaultButton(QMessageBox::No);
        box.setEscapeButton(QMessageBox::No);
        const int pressed = box.exec();
        return box.clickedButton() == save   ? BoxAnswer::SaveAll
               : pressed == QMessageBox::Yes ? BoxAnswer::Yes
                                             : BoxAnswer::No;
    }
    case BoxButtons::ContinueEnd:
        break;
    }
    QPushButton* goOn = box.addButton("&Continue", QMessageBox::AcceptRole);
    const QPushButton* end = box.addButton("&End", QMessageBox::RejectRole);
    box.setDefaultButton(goOn);
    box.setEscapeButton(goOn);
    box.exec();
    return box.clickedButton() == end ? BoxAnswer::End : BoxAnswer::Continue;
}

bool QtDialogs::NoticeOfSeveral(const std::string& text, const std::string& title,
                                BoxIcon icon, const std::string& detail, size_t others) {
    QMessageBox box(QApplication::activeWindow());
    Dress(box, text, title, icon);
    box.setInformativeText(Breakable(detail));
    OfferDetails(box, text + "\n" + detail);
    box.setStandardButtons(QMessageBox::Ok);
    box.setDefaultButton(QMessageBox::Ok);
    box.setEscapeButton(QMessageBox::Ok);
    if (others == 0) {
        box.exec();
        return false;
    }
    auto* rest = new QCheckBox("&The other " + QString::number(others) + " too");
    rest->setObjectName("chkOthers");
    rest->setToolTip("Says no more of them");
    box.setCheckBox(rest);
    box.exec();
    return rest->isChecked();
}

bool QtDialogs::Accepted(QFileDialog& dialog) {
    if (dialog.exec() != QDialog::Accepted)
        return false;
    const QString picked = dialog.selectedFiles().value(0);
    lastFolder_ =
        dialog.fileMode() == QFileDialog::Directory ? picked : QFileInfo(picked).path();
    return true;
}

FileAnswer QtDialogs::OpenFile(const FileQuestion& question) {
    FileDialog dialog(question, lastFolder_);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.FollowNames();
    if (!Accepted(dialog))
        Cancel();
    return dialog.Answer();
}

std::vector<std::string> QtDialogs::OpenFiles(const FileQuestion& question) {
    FileDialog dialog(question, lastFolder_);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.FollowNames();
    if (!Accepted(dialog))
        Cancel();
    std::vector<std::string> paths;
    for (const QString& path : dialog.selectedFiles())
        paths.push_back(path.toStdString());
    return paths;
}

FileAnswer QtDialogs::SaveFile(const FileQuestion& question) {
    FileDialog dialog(question, lastFolder_);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.CompleteNames();
    for (;;) {
        if (!Accepted(dialog))
            Cancel();
        FileAnswer answer = dialog.Answer();
        // A file of the same name in other letters would be written over just as well.
        const std::string there = TextOfPath(RealPath(answer.Path));
        if (!FileExists(answer.Path) ||
            MessageBox(there + " already exists.\nDo you want to replace it?",
                       question.Title, BoxIcon::Warning,
                       BoxButtons::YesNo) == BoxAnswer::Yes)
            return answer;
    }
}

std::optional<std::string> QtDialogs::Folder(const std::string& prompt,
                                             const std::string& initial) {
    QFileDialog dialog(QApplication::activeWindow(), QString::fromStdString(prompt));
    BeginAt(dialog, initial, lastFolder_);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (!Accepted(dialog))
        return std::nullopt;
    return dialog.selectedFiles().value(0).toStdString();
}

uint32_t QtDialogs::Color(uint32_t current) {
    const QColor color =
        QColorDialog::getColor(ColorOf(current), QApplication::activeWindow());
    if (!color.isValid())
        Cancel();
    return ValueOf(color);
}

FontChoice QtDialogs::Font(const FontChoice& current) {
    QFontDialog dialog(FontOf(current), QApplication::activeWindow());
    return ChosenFont(dialog, current);
}

FontChoice QtDialogs::FontAndColor(const FontChoice& current) {
    QFontDialog dialog(FontOf(current), QApplication::activeWindow());
    // Only the toolkit's own has room for a colour.
    dialog.setOption(QFontDialog::DontUseNativeDialog);
    auto* button = new ColorButton(&dialog);
    button->setObjectName("cmdFontColor");
    button->setAccessibleName("Color of the text");
    button->SetColor(current.Color);
    QObject::connect(button, &QAbstractButton::clicked, &dialog, [button, &dialog] {
        const QColor color = QColorDialog::getColor(ColorOf(button->Color()), &dialog);
        if (color.isValid())
            button->SetColor(ValueOf(color));
    });
    AddToEffects(dialog, *button);
    FontChoice choice = ChosenFont(dialog, current);
    choice.Color = button->Color();
    return choice;
}

} // namespace vardenix
