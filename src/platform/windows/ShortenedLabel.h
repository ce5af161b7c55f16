#pragma once

#include <QLabel>

namespace vardenix {

// A line of plain text that ends in dots where it has no room for all; its tool tip has
// the rest then, unless it has one of its own.
class ShortenedLabel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

    // As it is seen.
    QString Shown() const;

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace vardenix
