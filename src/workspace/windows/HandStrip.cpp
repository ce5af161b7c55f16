#include "workspace/windows/HandStrip.h"

#include "platform/windows/RunTimeBarrier.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

#include <limits>

namespace vardenix {

namespace {

// Behind the shapes of PostShape.
constexpr int SlopeRow = 5;
constexpr std::array<bool ClipFields::*, 5> FieldsOfClip{
    &ClipFields::Tile, &ClipFields::Elevation, &ClipFields::Palette, &ClipFields::X1,
    &ClipFields::X2};

bool PaintsPosts(const MapInteraction& interaction) {
    return interaction.Tool == MapTool::Brush || interaction.Tool == MapTool::Rectangle ||
           interaction.Tool == MapTool::Fill;
}

} // namespace

HandStrip::HandStrip(QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    MakeFields();
    MakeHeights();
    MakeGrounds();
    MakeClip();
}

template <typename Write>
void HandStrip::Change(Write write) {
    write(interaction_->Hand);
    ShowTools();
    emit HandChanged();
}

QComboBox* HandStrip::AddList(const char* name, const QStringList& entries,
                              const QString& tip) {
    auto* list = new QComboBox(this);
    list->setObjectName(name);
    list->addItems(entries);
    list->setToolTip(tip);
    list->setAccessibleName(tip);
    list->setFocusPolicy(Qt::StrongFocus);
    OnSignal(list, &QComboBox::activated, this, [this] { emit Done(); });
    layout()->addWidget(list);
    return list;
}

QCheckBox* HandStrip::AddBox(const char* name, const QString& text, const QString& tip) {
    auto* box = new QCheckBox(text, this);
    box->setObjectName(name);
    box->setToolTip(tip);
    box->setFocusPolicy(Qt::TabFocus);
    layout()->addWidget(box);
    return box;
}

QSpinBox* HandStrip::AddNumber(const char* name, int least, int most,
                               const QString& tip) {
    auto* number = new QSpinBox(this);
    number->setObjectName(name);
    number->setRange(least, most);
    number->setToolTip(tip);
    number->setAccessibleName(tip);
    number->setFocusPolicy(Qt::StrongFocus);
    OnSignal(number->findChild<QLineEdit*>(), &QLineEdit::returnPressed, this,
             [this] { emit Done(); });
    layout()->addWidget(number);
    return number;
}

void HandStrip::MakeFields() {
    // In the order of Painting.
    ComPaints_ =
        AddList("ComPaints",
                {tr("Tiles"), tr("Ground"), tr("Heights"), tr("Palette"), tr("X1"),
                 tr("X2"), tr("Ways")},
                tr("What brush, rectangle and fill give to the posts of level 2"));
    OnSignal(ComPaints_, &QComboBox::currentIndexChanged, this, [this](int index) {
        Change([index](HandState& hand) { hand.Paints = static_cast<Painting>(index); });
    });
    spnValue_ = AddNumber("spnValue", 0, std::numeric_limits<uint8_t>::max(),
                          tr("The value that the posts get"));
    OnSignal(spnValue_, &QSpinBox::valueChanged, this, [this](int value) {
        Change([value](HandState& hand) { hand.Value = static_cast<uint8_t>(value); });
    });
}

void HandStrip::MakeHeights() {
    // In the order of PostShape, and the slope behind.
    ComShape_ = AddList("ComShape",
                        {tr("Set to"), tr("Raise by"), tr("Lower by"), tr("Smooth"),
                         tr("Flatten"), tr("Slope")},
                        tr("What becomes of the elevations of the posts"));
    OnSignal(ComShape_, &QComboBox::currentIndexChanged, this, [this](int index) {
        Change([index](HandState& hand) {
            hand.Sloping = index == SlopeRow;
            if (!hand.Sloping)
                hand.Shape = static_cast<PostShape>(index);
        });
    });
    spnPostFeet_ = AddNumber("spnPostFeet", std::numeric_limits<int16_t>::min(),
                             std::numeric_limits<int16_t>::max(),
                             tr("The elevation, or by how much it changes"));
    spnPostFeet_->setSingleStep(10);
    spnPostFeet_->setSuffix(tr(" ft"));
    OnSignal(spnPostFeet_, &QSpinBox::valueChanged, this, [this](int feet) {
        interaction_->Feet = static_cast<int16_t>(feet);
        emit HandChanged();
    });
    chkSoft_ = AddBox("chkSoft", tr("Soft"),
                      tr("The brush does less towards its edge, and nothing beyond it"));
    OnSignal(chkSoft_, &QCheckBox::toggled, this,
             [this](bool on) { Change([on](HandState& hand) { hand.Soft = on; }); });
}

void HandStrip::MakeGrounds() {
    ComLike_ = AddList("ComLike", {tr("Same tile"), tr("Same kind"), tr("Same ground")},
                       tr("What a fill takes as one"));
    OnSignal(ComLike_, &QComboBox::currentIndexChanged, this, [this](int index) {
        Change([index](HandState& hand) { hand.Like = static_cast<FillLike>(index); });
    });
    chkInside_ = AddBox("chkInside", tr("Edge inside"),
                        tr("The transition lies on the painted posts, and no post "
                           "outside changes"));
    OnSignal(chkInside_, &QCheckBox::toggled, this, [this](bool on) {
        Change([on](HandState& hand) { hand.EdgeInside = on; });
    });
    ComGrounds_ = AddList("ComGrounds", {}, tr("The grounds that were learned"));
    ComGrounds_->setIconSize({20, 20});
    ComGrounds_->setMinimumContentsLength(8);
    OnSignal(ComGrounds_, &QComboBox::activated, this, [this](int index) {
        emit GroundChosen(ComGrounds_->itemData(index).toInt());
    });
}

void HandStrip::MakeClip() {
    const std::array<QString, 5> names{tr("Tile"), tr("Elevation"), tr("Palette"),
                                       tr("X1"), tr("X2")};
    for (size_t i = 0; i < fields_.size(); ++i) {
        const QString name = "chkField" + QString(names[i]).remove(' ');
        fields_[i] = AddBox(name.toUtf8().constData(), names[i],
                            tr("Comes along with what is copied, cut and moved"));
        OnSignal(fields_[i], &QCheckBox::toggled, this, [this, i](bool on) {
            Change([i, on](HandState& hand) { hand.Fields.*FieldsOfClip[i] = on; });
        });
    }
    const auto addButton = [this](const char* name, const QString& text,
                                  const QString& tip) {
        auto* button = new QToolButton(this);
        button->setObjectName(name);
        button->setText(text);
        button->setToolTip(tip);
        button->setFocusPolicy(Qt::TabFocus);
        layout()->addWidget(button);
        return button;
    };
    cmdMirror_ = addButton("cmdMirror", tr("Mirror"),
                           tr("From left to right; for elevations alone"));
    OnSignal(cmdMirror_, &QAbstractButton::clicked, this,
             [this] { emit MirrorWanted(); });
    cmdTurn_ = addButton("cmdTurn", tr("Turn"),
                         tr("By a quarter, against the clock; for elevations alone"));
    OnSignal(cmdTurn_, &QAbstractButton::clicked, this, [this] { emit TurnWanted(); });
}

void HandStrip::Join(MapInteraction& interaction, const MapView& view) {
    interaction_ = &interaction;
    view_ = &view;
    ShowTools();
}

void HandStrip::SetGrounds(const std::vector<GroundChoice>& grounds) {
    const QSignalBlocker quiet(ComGrounds_);
    ComGrounds_->clear();
    for (const GroundChoice& ground : grounds)
        ComGrounds_->addItem(ground.Picture, ground.Words, ground.Tile);
    ShowTools();
}

void HandStrip::ShowTools() {
    const HandState& hand = interaction_->Hand;
    const bool posts = PaintsPosts(*interaction_) && !view_->L0Mode && !hand.Stamp;
    const bool heights = posts && hand.Paints == Painting::Heights;
    const bool ground = posts && hand.Paints == Painting::Ground;
    const bool value = PaintsFields(*interaction_, *view_) && !heights && !hand.Stamp;
    const bool selects = interaction_->Tool == MapTool::Select ||
                         interaction_->Tool == MapTool::Lasso || hand.Stamp;
    for (QWidget* control : findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        control->blockSignals(true);
    ComPaints_->setCurrentIndex(static_cast<int>(hand.Paints));
    ComShape_->setCurrentIndex(hand.Sloping ? SlopeRow : static_cast<int>(hand.Shape));
    spnPostFeet_->setValue(interaction_->Feet);
    chkSoft_->setChecked(hand.Soft);
    spnValue_->setValue(hand.Value);
    chkInside_->setChecked(hand.EdgeInside);
    ComLike_->setCurrentIndex(static_cast<int>(hand.Like));
    for (size_t i = 0; i < fields_.size(); ++i)
        fields_[i]->setChecked(hand.Fields.*FieldsOfClip[i]);
    for (int i = 0; ground && i < ComGrounds_->count(); ++i)
        if (ComGrounds_->itemData(i).toInt() == interaction_->SelectedTile)
            ComGrounds_->setCurrentIndex(i);
    for (QWidget* control : findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        control->blockSignals(false);
    ComPaints_->setVisible(posts);
    ComShape_->setVisible(heights);
    const bool feet = hand.Shape == PostShape::Set || hand.Shape == PostShape::Raise ||
                      hand.Shape == PostShape::Lower;
    spnPostFeet_->setVisible(heights && feet && !hand.Sloping);
    chkSoft_->setVisible(heights &&
                         (interaction_->Tool == MapTool::Brush || hand.Sloping));
    spnValue_->setVisible(value);
    chkInside_->setVisible(ground);
    ComGrounds_->setVisible(ground && ComGrounds_->count() > 0);
    ComLike_->setVisible(posts && interaction_->Tool == MapTool::Fill &&
                         (ground || hand.Paints == Painting::Tile));
    for (QCheckBox* field : fields_)
        field->setVisible(selects && !view_->L0Mode);
    cmdMirror_->setVisible(hand.Stamp.has_value());
    cmdTurn_->setVisible(hand.Stamp.has_value());
    cmdMirror_->setEnabled(hand.Fields.MayTurn());
    cmdTurn_->setEnabled(hand.Fields.MayTurn());
}

} // namespace vardenix

#include "moc_HandStrip.cpp"
