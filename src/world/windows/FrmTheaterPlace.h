#pragma once

#include "levels/Terrain.h"
#include "world/WorldHelper.h"

#include <QDialog>

#include <array>
#include <memory>

namespace Ui {
class FrmTheaterPlace;
}

namespace vardenix {

// Where the theater lies on the earth, and the four corners that follow from it.
class FrmTheaterPlace : public QDialog {
    Q_OBJECT

public:
    // Borrowed for the window's life.
    explicit FrmTheaterPlace(const Terrain& terrain);
    ~FrmTheaterPlace() override;

    // Fills the fields; `source` tells where the place comes from.
    void ShowPlace(const TheaterPlace& place, const QString& source);
    // As the fields have it, which may be no place at all.
    TheaterPlace Place() const;
    void ShowCorners(const std::array<GeographicPoint, 4>& corners);
    void Tell(const QString& words);

signals:
    void CornersWanted();
    void SaveWanted();
    void ImportWanted();
    void ExportWanted();

private:
    void Follow();
    // The text of each corner by its number, as ShowCorners has them.
    template <typename Words>
    void NameCorners(Words words);

    const Terrain& terrain_;
    std::unique_ptr<Ui::FrmTheaterPlace> ui_;
};

} // namespace vardenix
