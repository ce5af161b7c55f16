#include "search/windows/frmVXSearchOptions.h"

#include "platform/windows/PinkBox.h"
#include "platform/windows/RunTimeBarrier.h"
#include "search/TileSearch.h"
#include "search/TilesMeant.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"
#include "texts/Windows1252.h"
#include "ui_frmVXSearchOptions.h"

#include <QSignalBlocker>

#include <algorithm>

namespace vardenix {

namespace {

// In the order of Text1 to Text5.
constexpr std::array Texts{&SearchCell::CellTile, &SearchCell::CellElevation,
                           &SearchCell::CellPalette, &SearchCell::CellX1,
                           &SearchCell::CellX2};

constexpr std::array CellNames{"Post",       "Above",       "Above right",
                               "Right",      "Below right", "Below",
                               "Below left", "Left",        "Above left"};

// "Post: Tile 5, Elv >200; Above: X1 3; named lake"
QString Described(const SearchQuery& query) {
    const SearchPattern& pattern = query.Pattern;
    constexpr std::array names{"Tile", "Elv", "Pal", "X1", "X2"};
    QStringList cells;
    for (size_t cell = 0; cell < pattern.size(); ++cell) {
        QStringList fields;
        for (size_t i = 0; i < Texts.size(); ++i)
            if (const std::string& text = pattern[cell].*Texts[i]; !text.empty())
                fields += QString(names[i]) + " " + QString::fromStdString(text);
        if (!fields.isEmpty())
            cells += QString(CellNames[cell]) + ": " + fields.join(", ");
    }
    if (!query.Named.empty())
        cells += QObject::tr("named %1").arg(QString::fromStdString(query.Named));
    return cells.isEmpty() ? QObject::tr("every post") : cells.join("; ");
}

} // namespace

frmVXSearchOptions::frmVXSearchOptions(SearchState& search, const TileLookup& lookup)
    : search_(search), lookup_(lookup), ui_(std::make_unique<Ui::frmVXSearchOptions>()) {
    ui_->setupUi(this);
    ui_->Cells->SetPattern(search.Pattern);
    for (QLineEdit* box : Boxes())
        OnSignal(box, &QLineEdit::textChanged, this, [this] { Text_Change(); });
    OnSignal(ui_->txtNamed, &QLineEdit::textChanged, this, [this] { TellNamed(); });
    // A long pattern must not make the window wider.
    ui_->comLast->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    OnSignal(ui_->Cells, &SearchCells::CellSelected, this,
             [this] { ShowSelectedCell(); });
    OnSignal(ui_->cmdClearAll, &QAbstractButton::clicked, this,
             [this] { cmdClearAll_Click(); });
    OnSignal(ui_->cmdSearch, &QAbstractButton::clicked, this,
             [this] { cmdSearch_Click(); });
    OnSignal(ui_->comLast, &QComboBox::activated, this,
             [this](int index) { comLast_Click(index); });
    setFixedSize(sizeHint());
}

frmVXSearchOptions::~frmVXSearchOptions() = default;

std::array<QLineEdit*, 5> frmVXSearchOptions::Boxes() const {
    return {ui_->Text1, ui_->Text2, ui_->Text3, ui_->Text4, ui_->Text5};
}

void frmVXSearchOptions::showEvent(QShowEvent* event) {
    FillLast();
    TellNamed(); // the catalogue may have become another
    ui_->Cells->Select(0);
    ui_->Text1->setFocus();
    QDialog::showEvent(event);
}

void frmVXSearchOptions::ShowSelectedCell() {
    const auto cell = static_cast<size_t>(ui_->Cells->Selected());
    for (size_t i = 0; i < Texts.size(); ++i) {
        const QSignalBlocker quiet(Boxes()[i]);
        Boxes()[i]->setText(
            QString::fromStdString(ui_->Cells->Pattern()[cell].*Texts[i]));
    }
    MarkWhatIsNoNumber();
    ui_->Frame2->setTitle(cell == 0 ? tr("The Post Itself")
                                    : tr("Neighbour: %1").arg(CellNames[cell]));
}

void frmVXSearchOptions::Text_Change() {
    SearchCell cell;
    for (size_t i = 0; i < Texts.size(); ++i)
        cell.*Texts[i] = LabelOfText(Boxes()[i]->text().toStdString());
    ui_->Cells->SetCell(cell);
    MarkWhatIsNoNumber();
}

void frmVXSearchOptions::MarkWhatIsNoNumber() {
    QString told;
    for (size_t i = 0; i < Texts.size(); ++i) {
        QLineEdit& box = *Boxes()[i];
        const std::string text = box.text().toStdString();
        const auto counted = NumberCounted(text);
        SetPink(box, counted.has_value());
        box.setToolTip(counted ? tr("No number: counts as %1")
                                     .arg(QString::fromStdString(Format0(*counted)))
                               : QString());
        if (counted && told.isEmpty())
            told = box.toolTip();
    }
    ui_->lblNoNumber->setText(told);
}

void frmVXSearchOptions::TellNamed() {
    const std::string text = ui_->txtNamed->text().toStdString();
    const bool any = TrimBlanks(text).empty();
    const auto tiles = std::ranges::count(TilesMeant(lookup_, BytesFromUtf8(text)), 1);
    SetPink(*ui_->txtNamed, !any && tiles == 0);
    ui_->lblNamed->setText(any          ? QString()
                           : tiles == 1 ? tr("1 tile")
                                        : tr("%1 tiles").arg(tiles));
}

void frmVXSearchOptions::cmdClearAll_Click() {
    ui_->txtNamed->clear();
    ui_->Cells->SetPattern({});
    ShowSelectedCell();
}

void frmVXSearchOptions::cmdSearch_Click() {
    search_.Pattern = ui_->Cells->Pattern();
    search_.Named = TrimBlanks(ui_->txtNamed->text().toStdString());
    RememberQuery(search_);
    hide();
    emit SearchWanted();
}

void frmVXSearchOptions::comLast_Click(int index) {
    if (static_cast<size_t>(index) >= search_.History.size())
        return;
    const SearchQuery& query = search_.History[static_cast<size_t>(index)];
    ui_->Cells->SetPattern(query.Pattern);
    ui_->txtNamed->setText(QString::fromStdString(query.Named));
    ShowSelectedCell();
}

void frmVXSearchOptions::FillLast() {
    ui_->comLast->clear();
    for (const SearchQuery& query : search_.History)
        ui_->comLast->addItem(Described(query));
    ui_->comLast->setEnabled(!search_.History.empty());
}

} // namespace vardenix

#include "moc_frmVXSearchOptions.cpp"
