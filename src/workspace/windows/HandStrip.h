#pragma once

#include "mapview/MapView.h"
#include "workspace/MapInteraction.h"

#include <QIcon>
#include <QWidget>

#include <array>
#include <cstdint>
#include <vector>

class QAbstractButton;
class QCheckBox;
class QComboBox;
class QSpinBox;

namespace vardenix {

// One of the grounds that were learned: its plain tile that is used most.
struct GroundChoice {
    int32_t Tile = 0;
    QString Words;
    QIcon Picture;
};

// Beside the tools of the map: what brush, rectangle and fill give to posts of level 2,
// and what of a clip comes along. Only what the tool in hand asks for is shown.
class HandStrip : public QWidget {
    Q_OBJECT

public:
    explicit HandStrip(QWidget* parent = nullptr);

    // Borrowed for the widget's life.
    void Join(MapInteraction& interaction, const MapView& view);
    void ShowTools();
    void SetGrounds(const std::vector<GroundChoice>& grounds);

signals:
    void HandChanged();
    // The ground of this tile was chosen.
    void GroundChosen(int tile);
    void MirrorWanted();
    void TurnWanted();
    // The map may have the keyboard again.
    void Done();

private:
    void MakeFields();
    void MakeHeights();
    void MakeGrounds();
    void MakeClip();
    QComboBox* AddList(const char* name, const QStringList& entries, const QString& tip);
    QCheckBox* AddBox(const char* name, const QString& text, const QString& tip);
    QSpinBox* AddNumber(const char* name, int least, int most, const QString& tip);
    // What a control writes into the hand.
    template <typename Write>
    void Change(Write write);

    MapInteraction* interaction_ = nullptr;
    const MapView* view_ = nullptr;
    QComboBox* ComPaints_ = nullptr;
    QComboBox* ComShape_ = nullptr;
    QSpinBox* spnPostFeet_ = nullptr;
    QCheckBox* chkSoft_ = nullptr;
    QSpinBox* spnValue_ = nullptr;
    QComboBox* ComGrounds_ = nullptr;
    QCheckBox* chkInside_ = nullptr;
    QComboBox* ComLike_ = nullptr;
    std::array<QCheckBox*, 5> fields_{};
    QAbstractButton* cmdMirror_ = nullptr;
    QAbstractButton* cmdTurn_ = nullptr;
};

} // namespace vardenix
