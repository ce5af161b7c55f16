#pragma once

#include "mapview/MapView.h"
#include "workspace/MapInteraction.h"

#include <QWidget>

class QAbstractButton;
class QComboBox;
class QLabel;
class QSpinBox;

namespace vardenix {

class HandStrip;

// The tools on the map's upper edge: what the left button does, how wide the brush is
// and, while the finest elevations are edited, what becomes of them.
class MapToolStrip : public QWidget {
    Q_OBJECT

public:
    explicit MapToolStrip(QWidget* parent = nullptr);

    // Borrowed for the widget's life.
    void Join(MapInteraction& interaction, const MapView& view);
    // A button of the name for an action, behind those that are there already. What it
    // does and how it looks is the caller's.
    QAbstractButton& AddTool(const QString& name);
    // The controls follow what was changed elsewhere.
    void ShowTools();
    void Choose(MapTool tool);
    void SetBrushSize(int size);
    // What the tools give to posts, and what of a clip comes along.
    HandStrip& Hand() { return *hand_; }

signals:
    // A tool, or what it does, was chosen here.
    void ToolsChanged();
    // The map may have the keyboard again.
    void Done();

private:
    void MakeBrushSize();
    void MakeHeights();
    void GiveKeyboardBack();

    MapInteraction* interaction_ = nullptr;
    const MapView* view_ = nullptr;
    int tools_ = 0;
    QSpinBox* spnBrushSize_ = nullptr;
    QLabel* lblHeights_ = nullptr;
    QComboBox* ComHeights_ = nullptr;
    QSpinBox* spnFeet_ = nullptr;
    HandStrip* hand_ = nullptr;
};

} // namespace vardenix
