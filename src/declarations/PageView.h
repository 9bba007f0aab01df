#pragma once

#include <QAbstractScrollArea>

#include <functional>

namespace oVELDRA::declarations {

class BandedReport;

/// One page of a report on the screen. What is seen of it is painted as it is exposed, so that a report of any length
/// takes no more memory than a short one.
///
/// The arrow keys and the wheel move over the page and on to its neighbours; turning pages and zooming is the
/// window's business.
class PageView final : public QAbstractScrollArea
{
public:
    /// The report must outlive the view.
    explicit PageView(const BandedReport& report, QWidget* parent = nullptr);

    /// The page that is shown, from 0.
    [[nodiscard]] int page() const { return m_page; }
    /// Shows the top of a page; a number beyond the ends is the first or last page.
    void goToPage(int page);

    /// 1 is the size on paper, as far as the system knows the screen's resolution.
    [[nodiscard]] double zoom() const { return m_zoom; }
    /// To the next larger (smaller) of a row of round factors.
    void zoomIn();
    void zoomOut();
    /// As large as the whole page, or the page's width, has room for. It stays so when the window's size changes.
    void fitPage();
    void fitWidth();

    /// Called when the page or the zoom has changed.
    void setChangeHandler(std::function<void()> handler) { m_changed = std::move(handler); }

    /// A page's width and most of its height in its real size.
    [[nodiscard]] QSize sizeHint() const override;
    /// Room for reading it bit by bit.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    enum class Fit { Free, Page, Width };

    void setZoom(double zoom, Fit fit);
    void fit();
    void layOut();
    /// Down (or up) to the next page when this one has been seen to its end. False when it has not.
    bool turnAtEnd(bool down);
    [[nodiscard]] double pixelsPerPoint(double zoom) const;
    [[nodiscard]] QSize pageSize() const;
    /// Of the page in the viewport, its top left corner.
    [[nodiscard]] QPoint corner() const;

    const BandedReport& m_report;
    std::function<void()> m_changed = [] {};
    int m_page = 0;
    double m_zoom = 1;
    Fit m_fit = Fit::Width;
    int m_wheel = 0; ///< turned at an end of the page, in eighths of a degree
};

} // namespace oVELDRA::declarations
