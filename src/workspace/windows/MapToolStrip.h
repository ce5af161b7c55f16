#pragma once

#include "mapview/MapView.h"
#include "workspace/MapInteraction.h"

#include <QWidget>

#include <array>

class QComboBox;
class QLabel;
class QSpinBox;
class QToolButton;

namespace vardenix {

// The tools on the map's upper edge: what the left button does, how wide the brush is
// and, while the finest elevations are edited, what becomes of them.
class MapToolStrip : public QWidget {
    Q_OBJECT

public:
    explicit MapToolStrip(QWidget* parent = nullptr);

    // Borrowed for the widget's life.
    void Join(MapInteraction& interaction, const MapView& view);
    // The controls follow what was changed elsewhere.
    void ShowTools();
    void Choose(MapTool tool);
    void SetBrushSize(int size);

signals:
    // A tool, or what it does, was chosen here.
    void ToolsChanged();
    // The map may have the keyboard again.
    void Done();

private:
    void MakeButton(MapTool tool, const char* name, const char* icon);
    void MakeBrushSize();
    void MakeHeights();
    void GiveKeyboardBack();

    MapInteraction* interaction_ = nullptr;
    const MapView* view_ = nullptr;
    std::array<QToolButton*, 4> buttons_{};
    QSpinBox* spnBrushSize_ = nullptr;
    QLabel* lblHeights_ = nullptr;
    QComboBox* ComHeights_ = nullptr;
    QSpinBox* spnFeet_ = nullptr;
};

} // namespace vardenix
