#pragma once

#include <QImage>
#include <QWidget>

namespace vardenix {

// A picture stretched over the whole widget, without smoothing.
class StretchedPicture : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    void SetPicture(const QImage& picture);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage picture_;
};

} // namespace vardenix
