#include "mapview/windows/QtDrawingSurface.h"

#include <QPainter>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace vardenix {
namespace {

class OnToolkitSurface : public testing::Test {
protected:
    OnToolkitSurface() { Begin(8); }

    void Begin(int side) {
        surface_.Resize(side, side);
        surface_.Clear(0);
        surface_.SetPen(0x112233, 1);
        surface_.SetFill(FillStyle::None, 0x445566);
    }

    // The picture as rows of letters: "." black, "p" the pen's colour, "f" the fill's,
    // "?" anything else, which is what smoothing would leave.
    std::string Drawn() const {
        const QImage& image = surface_.Image();
        std::string text;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                switch (image.pixel(x, y)) {
                case 0xFF000000:
                    text += '.';
                    break;
                case 0xFF332211:
                    text += 'p';
                    break;
                case 0xFF665544:
                    text += 'f';
                    break;
                default:
                    text += '?';
                }
            text += '\n';
        }
        return text;
    }

    QtDrawingSurface surface_;
};

TEST_F(OnToolkitSurface, PaintsItsPixelsThroughTheRaster) {
    surface_.Pixels().Row(2)[1] = 0xFF102030;
    EXPECT_EQ(surface_.Image().pixel(1, 2), 0xFF102030);
    EXPECT_EQ(surface_.Pixels().Width, 8);
    EXPECT_EQ(surface_.Pixels().Height, 8);
}

TEST_F(OnToolkitSurface, ASlantedLineHasBothEndsAndHardEdges) {
    surface_.Line({1, 1}, {4, 4});
    EXPECT_EQ(Drawn(), "........\n.p......\n..p.....\n...p....\n....p...\n........\n"
                       "........\n........\n");
}

TEST_F(OnToolkitSurface, AnUprightLineEndsWhereASlantedOneDoes) {
    surface_.Line({1, 2}, {1, 5});
    surface_.Line({3, 2}, {4, 5});
    const std::string drawn = Drawn();
    EXPECT_EQ(std::count(drawn.begin(), drawn.end(), 'p'), 8);
    EXPECT_EQ(drawn.substr(2 * 9, 9), ".p.p....\n");
    EXPECT_EQ(drawn.substr(5 * 9, 9), ".p..p...\n");
}

TEST_F(OnToolkitSurface, ACircleReachesItsRadiusOnEverySide) {
    surface_.SetFill(FillStyle::Solid, 0x445566);
    surface_.Circle({4, 4}, 3);
    const std::string drawn = Drawn();
    EXPECT_EQ(drawn.substr(0, 9), "........\n");
    EXPECT_EQ(drawn[1 * 9 + 4], 'p');
    EXPECT_EQ(drawn[7 * 9 + 4], 'p');
    EXPECT_EQ(drawn[4 * 9 + 1], 'p');
    EXPECT_EQ(drawn[4 * 9 + 7], 'p');
    EXPECT_EQ(drawn[4 * 9 + 0], '.');
    EXPECT_EQ(drawn[4 * 9 + 4], 'f');
    EXPECT_EQ(drawn[1 * 9 + 1], '.');
    EXPECT_EQ(drawn.find('?'), std::string::npos);
}

TEST_F(OnToolkitSurface, WithoutFillACircleIsARing) {
    surface_.Circle({4, 4}, 3);
    EXPECT_EQ(Drawn()[4 * 9 + 4], '.');
    EXPECT_EQ(Drawn()[4 * 9 + 1], 'p');
}

TEST_F(OnToolkitSurface, ACircleOfNoRadiusIsAPixel) {
    surface_.Circle({2.4, 5.6}, 0.1);
    EXPECT_EQ(Drawn(), "........\n........\n........\n........\n........\n........\n"
                       "..p.....\n........\n");
}

TEST_F(OnToolkitSurface, AnEllipseFillsItsRectangle) {
    surface_.Ellipse({7, 6}, {1, 2});
    const std::string drawn = Drawn();
    EXPECT_EQ(drawn.substr(0, 18), "........\n........\n");
    EXPECT_EQ(drawn[2 * 9 + 4], 'p');
    EXPECT_EQ(drawn[6 * 9 + 4], 'p');
    EXPECT_EQ(drawn[4 * 9 + 1], 'p');
    EXPECT_EQ(drawn[4 * 9 + 7], 'p');
    EXPECT_EQ(drawn.substr(7 * 9, 9), "........\n");
}

// Small circles are kept as rows of pixels; the toolkit's own painter says what they
// are.
TEST_F(OnToolkitSurface, EveryEllipseIsTheToolkitsWhereverItLies) {
    constexpr int side = 80;
    Begin(side);
    const auto compare = [&](const QRect& box, bool filled) {
        surface_.Clear(0);
        surface_.SetFill(filled ? FillStyle::Solid : FillStyle::None, 0x445566);
        surface_.Ellipse({box.x() * 1.0, box.y() * 1.0},
                         {box.x() * 1.0 + box.width(), box.y() * 1.0 + box.height()});
        QImage expected(side, side, QImage::Format_RGB32);
        expected.fill(Qt::black);
        {
            QPainter painter(&expected);
            painter.setPen(QPen(QColor(0x33, 0x22, 0x11), 1, Qt::SolidLine, Qt::SquareCap,
                                Qt::RoundJoin));
            if (filled)
                painter.setBrush(QColor(0x66, 0x55, 0x44));
            painter.drawEllipse(box);
        }
        ASSERT_EQ(surface_.Image(), expected)
            << box.width() << " by " << box.height() << " at " << box.x() << ", "
            << box.y() << (filled ? ", filled" : "");
    };
    for (int width = 1; width <= 70; width += width < 12 ? 1 : 7)
        for (int height = 1; height <= 70; height += height < 12 ? 1 : 7)
            for (const bool filled : {false, true})
                compare({5, 4, width, height}, filled);
    for (const int size : {1, 2, 9, 40, 64, 65})
        for (const QPoint& at : {QPoint(-size / 2, 10), QPoint(10, -size / 2),
                                 QPoint(side - 1 - size / 2, side - 1), QPoint(-size, 3),
                                 QPoint(side - 1, 70), QPoint(-1 - size, 5)})
            for (const bool filled : {false, true})
                compare({at, QSize(size, size)}, filled);
}

TEST_F(OnToolkitSurface, APolygonIsClosedAndFilledAndAPolylineIsNeither) {
    surface_.SetFill(FillStyle::Solid, 0x445566);
    const std::array<PicturePoint, 3> corners{PicturePoint{0, 0}, PicturePoint{6, 0},
                                              PicturePoint{0, 6}};
    surface_.Polygon(corners);
    EXPECT_EQ(Drawn()[2 * 9 + 2], 'f');
    EXPECT_EQ(Drawn()[3 * 9 + 0], 'p');
    surface_.Clear(0);
    surface_.Polyline(corners);
    EXPECT_EQ(Drawn()[2 * 9 + 2], '.');
    EXPECT_EQ(Drawn()[3 * 9 + 0], '.');
    EXPECT_EQ(Drawn()[3 * 9 + 3], 'p');
}

// The toolkit takes a shorter way for thin lines here than a plain painter does.
TEST_F(OnToolkitSurface, LinesAndPolygonsAreThoseOfAPlainPainter) {
    constexpr int side = 64;
    Begin(side);
    std::mt19937 random(12);
    const auto between = [&](int least, int most) {
        return least + static_cast<int>(random() % static_cast<unsigned>(most - least));
    };
    for (int round = 0; round < 600; ++round) {
        // Within the picture, round it, far beyond it; short steps and long ones.
        const int reach = std::array{0, 40, 3000}.at(static_cast<size_t>(round % 3));
        const bool steps = round % 2 == 0;
        std::vector<PicturePoint> points;
        QPolygon polygon;
        QPoint at;
        for (int i = between(2, 12); i > 0; --i) {
            at = steps && !polygon.isEmpty() ? at + QPoint(between(-4, 5), between(-4, 5))
                                             : QPoint(between(-reach, side + reach),
                                                      between(-reach, side + reach));
            points.push_back({at.x() * 1.0, at.y() * 1.0});
            polygon.append(at);
        }
        const int width = std::array{1, 1, 1, 2, 5}.at(static_cast<size_t>(round % 5));
        const bool closed = round % 7 == 0;
        surface_.Clear(0);
        surface_.SetPen(0x112233, width);
        surface_.SetFill(FillStyle::CrossHatch, 0x445566);
        QImage expected(side, side, QImage::Format_RGB32);
        expected.fill(Qt::black);
        QPainter painter(&expected);
        painter.setPen(QPen(QColor(0x33, 0x22, 0x11), width, Qt::SolidLine, Qt::SquareCap,
                            Qt::RoundJoin));
        painter.setBrush(QBrush(QColor(0x66, 0x55, 0x44), Qt::CrossPattern));
        if (closed) {
            surface_.Polygon(points);
            painter.drawPolygon(polygon);
        } else {
            surface_.Polyline(points);
            painter.drawPolyline(polygon);
        }
        painter.end();
        ASSERT_EQ(surface_.Image(), expected) << round;
    }
}

TEST_F(OnToolkitSurface, AHatchedBoxHasHolesWithinItsOutline) {
    Begin(24);
    surface_.SetFill(FillStyle::CrossHatch, 0x445566);
    surface_.Rectangle({1, 1}, {22, 22});
    const std::string drawn = Drawn();
    EXPECT_EQ(std::count(drawn.begin(), drawn.end(), 'p'), 4 * 21);
    const auto inked = std::count(drawn.begin(), drawn.end(), 'f');
    EXPECT_GT(inked, 20);
    EXPECT_LT(inked, 20 * 20 / 2);
    EXPECT_EQ(drawn.find('?'), std::string::npos);
}

TEST_F(OnToolkitSurface, APenOfNoWidthDrawsOnePixel) {
    surface_.SetPen(0x112233, 0);
    surface_.Line({0, 0}, {7, 7});
    EXPECT_EQ(std::ranges::count(Drawn(), 'p'), 8);
}

TEST_F(OnToolkitSurface, ShapesFarAwayAreCut) {
    const double far = std::numeric_limits<double>::max();
    surface_.SetFill(FillStyle::Solid, 0x445566);
    surface_.Line({-far, -far}, {far, far});
    surface_.Circle({far, 0}, 10);
    surface_.Circle({-5000, 4}, 3);
    surface_.DrawText({far, -far}, "77", 0xFFFFFF);
    surface_.DrawText({-far, 3}, "77", 0xFFFFFF);
    const std::string drawn = Drawn();
    EXPECT_EQ(std::count(drawn.begin(), drawn.end(), 'p'), 8);
    EXPECT_EQ(std::count(drawn.begin(), drawn.end(), 'f'), 0);
}

TEST_F(OnToolkitSurface, ShapesAndBarePixelsMayTakeTurns) {
    surface_.Circle({4, 4}, 2);
    surface_.Line({0, 0}, {7, 0});
    surface_.Line({0, 1}, {1, 2});
    surface_.BlendColor({0, 7, 8, 1}, 0x112233, 255);
    const std::string drawn = Drawn();
    EXPECT_EQ(drawn.substr(0, 9), "pppppppp\n");
    EXPECT_EQ(drawn[2 * 9 + 1], 'p');
    EXPECT_EQ(drawn.substr(7 * 9, 9), "pppppppp\n");
    EXPECT_EQ(drawn[4 * 9 + 2], 'p');
}

TEST_F(OnToolkitSurface, APictureThatSomebodyKeepsStaysAsItWas) {
    surface_.Clear(0xFF);
    const QImage kept =
        surface_.Image(); // NOLINT(performance-unnecessary-copy-initialization)
    surface_.Clear(0xFF00);
    surface_.Circle({4, 4}, 2);
    EXPECT_EQ(kept.pixel(0, 0), 0xFFFF0000);
    EXPECT_EQ(kept.pixel(4, 2), 0xFFFF0000);
    EXPECT_EQ(surface_.Image().pixel(0, 0), 0xFF00FF00);
}

class TextsOnToolkitSurface : public OnToolkitSurface {
protected:
    TextsOnToolkitSurface() {
        Begin(64);
        surface_.SetFont({.Name = "Arial", .Size = 12});
    }

    // The smallest rectangle round everything that is not black.
    QRect Ink() const {
        QRect ink;
        for (int y = 0; y < 64; ++y)
            for (int x = 0; x < 64; ++x)
                if (surface_.Image().pixel(x, y) != 0xFF000000)
                    ink |= QRect(x, y, 1, 1);
        return ink;
    }
};

TEST_F(TextsOnToolkitSurface, TheTextLiesInItsRectangleInItsColour) {
    const TextSize size = surface_.MeasureText("1234");
    EXPECT_GT(size.Width, 20);
    // 12 points are 16 pixels at 96 dots per inch; a line is a little higher.
    EXPECT_GE(size.Height, 16);
    EXPECT_LE(size.Height, 22);
    surface_.DrawText({10, 20}, "1234", 0x0000FF);
    const QRect place(10, 20, size.Width, size.Height);
    EXPECT_TRUE(place.contains(Ink()));
    EXPECT_GT(Ink().width(), size.Width / 2);
    bool full = false;
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) {
            const QRgb pixel = surface_.Image().pixel(x, y);
            EXPECT_EQ(pixel & 0xFFFF, 0U);
            full = full || pixel == 0xFFFF0000;
        }
    EXPECT_TRUE(full);
}

TEST_F(TextsOnToolkitSurface, TheSameTextMayHaveAnotherColourAndPlace) {
    surface_.DrawText({2, 2}, "8", 0x00FF00);
    const QRect first = Ink();
    surface_.Clear(0);
    surface_.DrawText({12.4, 30.6}, "8", 0xFF0000);
    EXPECT_EQ(Ink(), first.translated(10, 29));
}

TEST_F(TextsOnToolkitSurface, WhatLiesUnderTheTextShinesThroughWhereItIsSmooth) {
    surface_.Clear(0xFFFFFF);
    surface_.DrawText({2, 2}, "8", 0xFFFFFF);
    for (int x = 0; x < 64; ++x)
        EXPECT_EQ(surface_.Image().pixel(x, 10), 0xFFFFFFFF);
}

TEST_F(TextsOnToolkitSurface, ATextIsCutAtEveryEdge) {
    const TextSize size = surface_.MeasureText("8888");
    surface_.DrawText({-size.Width / 2.0, -size.Height / 2.0}, "8888", 0xFF);
    EXPECT_EQ(Ink().topLeft().x(), 0);
    surface_.DrawText({60, 58}, "8888", 0xFF);
    EXPECT_EQ(Ink().right(), 63);
}

TEST_F(TextsOnToolkitSurface, FontsKeepTheirAttributes) {
    const int plain = surface_.MeasureText("0000").Width;
    surface_.SetFont({.Name = "Arial", .Size = 12, .Bold = true});
    EXPECT_GT(surface_.MeasureText("mmmm").Width, plain);
    surface_.SetFont({.Name = "Arial", .Size = 24});
    EXPECT_NEAR(surface_.MeasureText("0000").Width, 2 * plain, 4);
    surface_.SetFont({.Name = "Arial", .Size = 12, .Underline = true});
    surface_.DrawText({4, 4}, "0", 0xFF);
    const int underlined = Ink().bottom();
    surface_.Clear(0);
    surface_.SetFont({.Name = "Arial", .Size = 12});
    surface_.DrawText({4, 4}, "0", 0xFF);
    EXPECT_GT(underlined, Ink().bottom());
    EXPECT_EQ(surface_.MeasureText("0000").Width, plain);
}

TEST_F(TextsOnToolkitSurface, SizesThatNoFontHasAreBroughtIntoRange) {
    for (const float size : {-3.0F, 0.0F, std::numeric_limits<float>::quiet_NaN(),
                             std::numeric_limits<float>::infinity()}) {
        surface_.SetFont({.Name = "no such font", .Size = size});
        const TextSize measured = surface_.MeasureText("1");
        EXPECT_GE(measured.Height, 1) << size;
        EXPECT_LE(measured.Height, 1000) << size;
    }
}

TEST_F(TextsOnToolkitSurface, AnEmptyTextHasAHeightAndNoInk) {
    EXPECT_EQ(surface_.MeasureText("").Width, 0);
    EXPECT_GT(surface_.MeasureText("").Height, 0);
    surface_.DrawText({4, 4}, "", 0xFF);
    EXPECT_TRUE(Ink().isNull());
}

} // namespace
} // namespace vardenix
