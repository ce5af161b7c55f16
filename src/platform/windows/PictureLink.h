#pragma once

#include <QAbstractButton>
#include <QIcon>

namespace vardenix {

// A picture that can be clicked, or pressed by Space: keeps its height and shape, and
// fills a greater width with the colours of its right edge. Its icon holds the picture.
class PictureLink : public QAbstractButton {
    Q_OBJECT

public:
    explicit PictureLink(QWidget* parent = nullptr);

    // At 96 dots per inch; grows with the dots of the screen, as the texts do.
    void SetPicture(const QString& resource, QSize size);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QIcon picture_;
    QSize size_;
};

} // namespace vardenix
