#pragma once

#include <QBasicTimer>
#include <QLabel>
#include <QObject>
#include <QSet>

#include <cstdint>
#include <memory>

namespace vardenix {

// A tool tip window of its own colours, with an optional header line, for the controls
// that are added to it. It comes up where the platform's tool tips would, on a disabled
// control too, goes along with the cursor over its control, and shows a changed text at
// once.
class clsToolTip : public QObject {
    Q_OBJECT

public:
    explicit clsToolTip(QObject* parent = nullptr);
    ~clsToolTip() override;

    // Makes the tool tip window, for tools of `window`; again replaces it, without tools.
    void Create(QWidget& window);
    // False until Create.
    bool fIsWindow() const { return tip_ != nullptr; }
    QWidget* hwnd() const { return window_; }
    QWidget* ToolTipHandle() const;

    // A tool is borrowed, and forgotten when it goes. Its text is its own tool tip.
    void AddTool(QWidget& tool);
    void RemoveTool(QWidget& tool);
    int ToolCount() const { return static_cast<int>(tools_.size()); }
    bool HasToolTip(const QWidget& tool) const;

    // Plain text; empty shows no tip.
    static QString ToolText(const QWidget& tool);
    void SetToolText(QWidget& tool, const QString& text);
    // Up at once, without the rest of the cursor; `cursor` on the screen.
    void Show(QWidget& tool, QPoint cursor);
    QString ToolTipHeader() const { return header_; }
    void SetToolTipHeader(const QString& header);
    bool ToolTipHeaderShow() const { return headerShow_; }
    void SetToolTipHeaderShow(bool show);

    // 0x00BBGGRR.
    uint32_t BackColor() const { return backColor_; }
    void SetBackColor(uint32_t color);
    uint32_t ForeColor() const { return foreColor_; }
    void SetForeColor(uint32_t color);
    // Milliseconds until a tip goes by itself.
    int DelayTime() const { return delayTime_; }
    void SetDelayTime(int milliseconds) { delayTime_ = milliseconds; }
    // Pixels; longer lines are broken.
    int MaxTipWidth() const { return maxTipWidth_; }
    void SetMaxTipWidth(int pixels);
    // Pixels between the text and the border.
    int Margin() const { return margin_; }
    void SetMargin(int pixels);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void Hide();
    void Dress();
    void ShowText();
    void MoveTo(QPoint cursor);

    QWidget* window_ = nullptr;
    std::unique_ptr<QLabel> tip_;
    QSet<const QObject*> tools_;
    QWidget* shown_ = nullptr; // the tool whose tip is up
    QPoint cursor_;            // where it was last, on the screen
    QString header_;
    bool headerShow_ = false;
    uint32_t backColor_ = 0xE1FFFF; // the usual pale yellow
    uint32_t foreColor_ = 0;
    int delayTime_ = 5000;
    int maxTipWidth_ = 240;
    int margin_ = 4;
    QBasicTimer autoPop_;
};

} // namespace vardenix
