#include "workspace/windows/MapToolStrip.h"

#include "platform/windows/RunTimeBarrier.h"
#include "workspace/GridShapes.h"
#include "workspace/windows/HandStrip.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

#include <algorithm>
#include <limits>

namespace vardenix {

namespace {

constexpr int StripHeight = 30; // pixels
constexpr int IconSide = 20;

} // namespace

MapToolStrip::MapToolStrip(QWidget* parent) : QWidget(parent) {
    setFixedHeight(StripHeight);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(2, 1, 4, 1);
    row->setSpacing(2);
    MakeBrushSize();
    MakeHeights();
    hand_ = new HandStrip(this);
    OnSignal(hand_, &HandStrip::HandChanged, this, [this] {
        ShowTools();
        emit ToolsChanged();
    });
    OnSignal(hand_, &HandStrip::Done, this, [this] { emit Done(); });
    row->addWidget(hand_);
    GiveKeyboardBack();
    row->addStretch();
    // The map is narrower than the strip may be in a small window.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QAbstractButton& MapToolStrip::AddTool(const QString& name) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setIconSize({IconSide, IconSide});
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    static_cast<QHBoxLayout*>(layout())->insertWidget(tools_, button);
    QWidget* before = this;
    if (tools_ > 0)
        before = layout()->itemAt(tools_ - 1)->widget();
    setTabOrder(before, button);
    ++tools_;
    return *button;
}

void MapToolStrip::MakeBrushSize() {
    spnBrushSize_ = new QSpinBox(this);
    spnBrushSize_->setObjectName("spnBrushSize");
    spnBrushSize_->setRange(1, MaxBrushSize);
    spnBrushSize_->setPrefix(tr("Size "));
    spnBrushSize_->setFocusPolicy(Qt::StrongFocus);
    OnSignal(spnBrushSize_, &QSpinBox::valueChanged, this,
             [this](int size) { SetBrushSize(size); });
    layout()->addWidget(spnBrushSize_);
}

void MapToolStrip::MakeHeights() {
    lblHeights_ = new QLabel(tr("  Heights:"), this);
    ComHeights_ = new QComboBox(this);
    ComHeights_->setObjectName("ComHeights");
    // In the order of HeightTool.
    ComHeights_->addItems(
        {tr("Leave"), tr("Set to"), tr("Raise by"), tr("Lower by"), tr("Smooth")});
    ComHeights_->setToolTip(
        tr("What the tools do to the heights; \"Leave\" has them paint tiles"));
    ComHeights_->setAccessibleName(tr("What the tools do to heights"));
    ComHeights_->setFocusPolicy(Qt::StrongFocus);
    spnFeet_ = new QSpinBox(this);
    spnFeet_->setObjectName("spnFeet");
    spnFeet_->setRange(std::numeric_limits<int16_t>::min(),
                       std::numeric_limits<int16_t>::max());
    spnFeet_->setSingleStep(10);
    spnFeet_->setSuffix(tr(" ft"));
    spnFeet_->setFocusPolicy(Qt::StrongFocus);
    spnFeet_->setToolTip(tr("The height, or by how much it changes"));
    spnFeet_->setAccessibleName(tr("Feet"));
    OnSignal(ComHeights_, &QComboBox::currentIndexChanged, this, [this](int index) {
        interaction_->Heights = static_cast<HeightTool>(index);
        ShowTools();
        emit ToolsChanged();
    });
    OnSignal(spnFeet_, &QSpinBox::valueChanged, this, [this](int feet) {
        interaction_->Feet = static_cast<int16_t>(feet);
        emit ToolsChanged();
    });
    for (QWidget* part :
         std::initializer_list<QWidget*>{lblHeights_, ComHeights_, spnFeet_})
        layout()->addWidget(part);
}

void MapToolStrip::GiveKeyboardBack() {
    OnSignal(ComHeights_, &QComboBox::activated, this, [this] { emit Done(); });
    for (QSpinBox* box : {spnBrushSize_, spnFeet_})
        OnSignal(box->findChild<QLineEdit*>(), &QLineEdit::returnPressed, this,
                 [this] { emit Done(); });
}

void MapToolStrip::Join(MapInteraction& interaction, const MapView& view) {
    interaction_ = &interaction;
    view_ = &view;
    hand_->Join(interaction, view);
    ShowTools();
}

void MapToolStrip::ShowTools() {
    const QSignalBlocker quiet[] = {QSignalBlocker(spnBrushSize_),
                                    QSignalBlocker(ComHeights_),
                                    QSignalBlocker(spnFeet_)};
    hand_->ShowTools();
    spnBrushSize_->setValue(interaction_->BrushSize);
    ComHeights_->setCurrentIndex(static_cast<int>(interaction_->Heights));
    spnFeet_->setValue(interaction_->Feet);
    lblHeights_->setVisible(view_->L0Mode);
    ComHeights_->setVisible(view_->L0Mode);
    spnFeet_->setVisible(view_->L0Mode && interaction_->Heights != HeightTool::None &&
                         interaction_->Heights != HeightTool::Smooth);
}

void MapToolStrip::Choose(MapTool tool) {
    ChooseTool(*interaction_, tool);
    ShowTools();
    emit ToolsChanged();
}

void MapToolStrip::SetBrushSize(int size) {
    interaction_->BrushSize = std::clamp(size, 1, int{MaxBrushSize});
    ShowTools();
    emit ToolsChanged();
}

} // namespace vardenix

#include "moc_MapToolStrip.cpp"
