#pragma once

#include <QObject>
#include <QString>

class QGroupBox;
class QToolButton;

namespace vardenix {

// Lets a group of the panel be folded to its title, by an arrow in that or by a click on
// it.
class FoldingGroup : public QObject {
    Q_OBJECT

public:
    // Belongs to the box.
    explicit FoldingGroup(QGroupBox& box);

    QString Name() const;
    bool IsFolded() const { return folded_; }
    void Fold(bool folded);

signals:
    // By the user.
    void Toggled();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int TitleHeight() const;
    void Toggle();

    QGroupBox& box_;
    QToolButton* arrow_;
    bool folded_ = false;
};

} // namespace vardenix
