#pragma once

#include <nxsim/part_file.h>

#include <QPointF>
#include <QRectF>
#include <QWidget>

#include <optional>
#include <string>
#include <vector>

namespace QorfmtHost {

/// The graphics window: draws the display part's current drawing sheet and its points and lines,
/// and answers point picks (a click) and object selections (a click near an object).
class GraphicsView : public QWidget {
    Q_OBJECT

public:
    enum class PickMode { None, Point, Object };

    explicit GraphicsView(QWidget* parent = nullptr);

    /// Reads the platform's display part (and highlights) again when its file changed.
    void refresh();
    /// Shows the part of `file`, empty for none; a file that cannot be read is reported in the
    /// window.
    void showPart(const std::string& file);
    const std::optional<nxsim::SimPart>& part() const { return m_part; }
    const std::string& partFile() const { return m_file; }

    /// Waits for a click: pointPicked / objectPicked, or pickCancelled on Escape or right click.
    void beginPick(PickMode mode, const QString& prompt);
    void endPick();
    PickMode pickMode() const { return m_mode; }
    /// Marks a picked point (replayed or clicked).
    void markPoint(double x, double y);

    /// The rectangle of the part (sheet and objects) in part coordinates.
    QRectF partBounds() const;
    /// Screen position of a part point, and back (y grows upwards in the part).
    QPointF toScreen(double x, double y) const;
    QPointF toPart(const QPointF& screen) const;
    /// The object drawn within `tolerance` pixels of `screen`, null when none.
    const nxsim::SimObject* objectNear(const QPointF& screen, double tolerance = 8.0) const;
    /// A point a position pick may snap to, in part coordinates, and what it is. Where two
    /// coincide, the kind listed first is the one shown.
    struct SnapPoint {
        enum Kind { Point, EndPoint, Intersection, MidPoint };
        QPointF at;
        Kind kind = Point;
    };
    /// The snap point of the part (a point object, a line's end, where two lines cross, a line's
    /// middle) nearest to `screen` within `tolerance` pixels: what a position pick snaps to.
    std::optional<SnapPoint> snapNear(const QPointF& screen, double tolerance = 8.0) const;
    std::optional<QPointF> snapPointNear(const QPointF& screen, double tolerance = 8.0) const;
    /// What a position pick shows as its snap target now, in part coordinates.
    std::optional<QPointF> snapTarget() const;
    /// The words for a kind of snap point, as the status bar shows them ("end point").
    static QString snapKindText(SnapPoint::Kind kind);
    /// The object an object selection would take now (highlighted), 0 for none.
    unsigned int hoveredObject() const { return m_hoverTag; }

    QSize sizeHint() const override { return {640, 440}; }

signals:
    void pointPicked(double x, double y);
    void objectPicked(unsigned int tag);
    void pickCancelled();
    /// The part coordinates under the mouse, for the status bar.
    void hovered(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    struct Transform {
        double scale = 1.0;
        double offsetX = 0.0;
        double offsetY = 0.0;
    };
    Transform transform() const;
    const nxsim::SimDrawing* drawing() const;
    /// Follows the cursor at `screen`: snap target or object under it, and the status text.
    void track(const QPointF& screen, Qt::KeyboardModifiers modifiers);

    std::string m_file;
    std::optional<nxsim::SimPart> m_part;
    QString m_error;
    PickMode m_mode = PickMode::None;
    QString m_prompt;
    std::optional<QPointF> m_marker;
    std::vector<SnapPoint> m_snapPoints; ///< of the shown part, in the order of their kinds
    std::optional<SnapPoint> m_snap;
    unsigned int m_hoverTag = 0;
    std::optional<QPointF> m_cursor;         ///< last cursor position, screen
    std::vector<unsigned int> m_highlighted; ///< as last drawn
};

} // namespace QorfmtHost
