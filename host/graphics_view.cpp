#include "graphics_view.h"

#include <nxsim/platform.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace QorfmtHost {

namespace {

// The yellow bar of a pick's prompt along the bottom. The drawing keeps clear of it always, so
// that a sheet's lower corners stay pickable and the picture does not move when a pick begins.
constexpr double kPromptBarHeight = 28.0;

double distanceToSegment(const QPointF& p, const QPointF& a, const QPointF& b) {
    const QPointF ab = b - a;
    const double length2 = ab.x() * ab.x() + ab.y() * ab.y();
    double t = 0.0;
    if (length2 > 0.0) {
        const QPointF ap = p - a;
        t = std::clamp((ap.x() * ab.x() + ap.y() * ab.y()) / length2, 0.0, 1.0);
    }
    const QPointF nearest = a + ab * t;
    return std::hypot(p.x() - nearest.x(), p.y() - nearest.y());
}

} // namespace

GraphicsView::GraphicsView(QWidget* parent) : QWidget(parent) {
    setObjectName("graphics");
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, QColor(92, 104, 118));
    setPalette(p);
}

void GraphicsView::refresh() {
    const std::string file = nxsim::displayPartFile();
    if (file != m_file) {
        showPart(file);
        return;
    }
    std::vector<unsigned int> lit;
    if (m_part) {
        for (const nxsim::SimObject& o : m_part->objects) {
            if (nxsim::highlighted(o.tag)) {
                lit.push_back(o.tag);
            }
        }
    }
    if (lit != m_highlighted) {
        m_highlighted = lit;
        update();
    }
}

namespace {

// Where the segments a-b and c-d cross, if they do (touching ends included); parallel segments
// have no such point.
std::optional<QPointF> crossing(const QPointF& a, const QPointF& b, const QPointF& c,
                                const QPointF& d) {
    const QPointF r = b - a;
    const QPointF s = d - c;
    const double denominator = r.x() * s.y() - r.y() * s.x();
    const double scale = std::hypot(r.x(), r.y()) * std::hypot(s.x(), s.y());
    if (scale == 0.0 || std::abs(denominator) <= 1e-12 * scale) {
        return std::nullopt;
    }
    const QPointF q = c - a;
    const double t = (q.x() * s.y() - q.y() * s.x()) / denominator;
    const double u = (q.x() * r.y() - q.y() * r.x()) / denominator;
    const double slack = 1e-12;
    if (t < -slack || t > 1.0 + slack || u < -slack || u > 1.0 + slack) {
        return std::nullopt;
    }
    return a + t * r;
}

std::vector<GraphicsView::SnapPoint> snapPointsOf(const nxsim::SimPart& part) {
    using SnapPoint = GraphicsView::SnapPoint;
    std::vector<SnapPoint> points;
    std::vector<std::pair<QPointF, QPointF>> lines;
    for (const nxsim::SimObject& o : part.objects) {
        const QPointF start(o.start[0], o.start[1]);
        if (o.type == nxsim::SimObject::Line) {
            const QPointF end(o.end[0], o.end[1]);
            points.push_back({start, SnapPoint::EndPoint});
            points.push_back({end, SnapPoint::EndPoint});
            lines.emplace_back(start, end);
        } else {
            points.push_back({start, SnapPoint::Point});
        }
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        for (std::size_t j = i + 1; j < lines.size(); ++j) {
            if (const auto at =
                    crossing(lines[i].first, lines[i].second, lines[j].first, lines[j].second)) {
                points.push_back({*at, SnapPoint::Intersection});
            }
        }
    }
    for (const auto& [start, end] : lines) {
        points.push_back({(start + end) / 2.0, SnapPoint::MidPoint});
    }
    std::stable_sort(points.begin(), points.end(),
                     [](const SnapPoint& a, const SnapPoint& b) { return a.kind < b.kind; });
    return points;
}

} // namespace

void GraphicsView::showPart(const std::string& file) {
    m_file = file;
    m_part.reset();
    m_snapPoints.clear();
    m_snap.reset();
    m_error.clear();
    m_marker.reset();
    m_highlighted.clear();
    if (!file.empty()) {
        try {
            m_part = nxsim::readPartFile(file);
            m_snapPoints = snapPointsOf(*m_part);
        } catch (const std::exception& e) {
            m_error = QString::fromStdString(e.what());
        }
    }
    update();
}

void GraphicsView::beginPick(PickMode mode, const QString& prompt) {
    m_mode = mode;
    m_prompt = prompt;
    setCursor(Qt::CrossCursor);
    setFocus(Qt::OtherFocusReason);
    update();
}

void GraphicsView::endPick() {
    m_mode = PickMode::None;
    m_snap.reset();
    m_hoverTag = 0;
    m_prompt.clear();
    unsetCursor();
    update();
}

void GraphicsView::markPoint(double x, double y) {
    m_marker = QPointF(x, y);
    update();
}

const nxsim::SimDrawing* GraphicsView::drawing() const {
    if (!m_part || m_part->drawings.empty()) {
        return nullptr;
    }
    const int index = m_part->currentDrawing >= 0 &&
                              m_part->currentDrawing < static_cast<int>(m_part->drawings.size())
                          ? m_part->currentDrawing
                          : 0;
    return &m_part->drawings[static_cast<std::size_t>(index)];
}

QRectF GraphicsView::partBounds() const {
    double minX = std::numeric_limits<double>::max();
    double minY = minX;
    double maxX = std::numeric_limits<double>::lowest();
    double maxY = maxX;
    auto add = [&](double x, double y) {
        minX = std::min(minX, x);
        minY = std::min(minY, y);
        maxX = std::max(maxX, x);
        maxY = std::max(maxY, y);
    };
    if (const nxsim::SimDrawing* sheet = drawing()) {
        add(0.0, 0.0);
        add(sheet->length, sheet->height);
    }
    if (m_part) {
        for (const nxsim::SimObject& o : m_part->objects) {
            add(o.start[0], o.start[1]);
            if (o.type == nxsim::SimObject::Line) {
                add(o.end[0], o.end[1]);
            }
        }
    }
    if (minX > maxX) {
        return QRectF(0.0, 0.0, 420.0, 297.0);
    }
    if (maxX - minX < 1e-9) {
        maxX = minX + 1.0;
    }
    if (maxY - minY < 1e-9) {
        maxY = minY + 1.0;
    }
    return QRectF(QPointF(minX, minY), QPointF(maxX, maxY));
}

GraphicsView::Transform GraphicsView::transform() const {
    const QRectF bounds = partBounds();
    const double margin = 24.0;
    const double w = std::max(1.0, width() - 2 * margin);
    const double h = std::max(1.0, height() - 2 * margin - kPromptBarHeight);
    Transform t;
    t.scale = std::min(w / bounds.width(), h / bounds.height());
    t.offsetX = margin + (w - bounds.width() * t.scale) / 2.0 - bounds.left() * t.scale;
    t.offsetY = margin + (h - bounds.height() * t.scale) / 2.0 + bounds.bottom() * t.scale;
    return t;
}

QPointF GraphicsView::toScreen(double x, double y) const {
    const Transform t = transform();
    return QPointF(t.offsetX + x * t.scale, t.offsetY - y * t.scale);
}

QPointF GraphicsView::toPart(const QPointF& screen) const {
    const Transform t = transform();
    return QPointF((screen.x() - t.offsetX) / t.scale, (t.offsetY - screen.y()) / t.scale);
}

const nxsim::SimObject* GraphicsView::objectNear(const QPointF& screen, double tolerance) const {
    if (!m_part) {
        return nullptr;
    }
    const nxsim::SimObject* best = nullptr;
    double bestDistance = tolerance;
    for (const nxsim::SimObject& o : m_part->objects) {
        const QPointF a = toScreen(o.start[0], o.start[1]);
        const double d = o.type == nxsim::SimObject::Line
                             ? distanceToSegment(screen, a, toScreen(o.end[0], o.end[1]))
                             : std::hypot(screen.x() - a.x(), screen.y() - a.y());
        if (d <= bestDistance) {
            bestDistance = d;
            best = &o;
        }
    }
    return best;
}

std::optional<GraphicsView::SnapPoint> GraphicsView::snapNear(const QPointF& screen,
                                                              double tolerance) const {
    std::optional<SnapPoint> best;
    double bestDistance = tolerance;
    for (const SnapPoint& point : m_snapPoints) {
        const QPointF s = toScreen(point.at.x(), point.at.y());
        const double d = std::hypot(screen.x() - s.x(), screen.y() - s.y());
        // Strictly nearer only: of two that coincide, the kind listed first stays.
        if (d < bestDistance || (!best && d <= bestDistance)) {
            bestDistance = d;
            best = point;
        }
    }
    return best;
}

std::optional<QPointF> GraphicsView::snapPointNear(const QPointF& screen, double tolerance) const {
    const std::optional<SnapPoint> point = snapNear(screen, tolerance);
    return point ? std::optional<QPointF>(point->at) : std::nullopt;
}

std::optional<QPointF> GraphicsView::snapTarget() const {
    return m_snap ? std::optional<QPointF>(m_snap->at) : std::nullopt;
}

QString GraphicsView::snapKindText(SnapPoint::Kind kind) {
    switch (kind) {
    case SnapPoint::Point:
        return tr("point");
    case SnapPoint::EndPoint:
        return tr("end point");
    case SnapPoint::Intersection:
        return tr("intersection");
    case SnapPoint::MidPoint:
        return tr("mid-point");
    }
    return {};
}

void GraphicsView::track(const QPointF& screen, Qt::KeyboardModifiers modifiers) {
    m_cursor = screen;
    const std::optional<SnapPoint> snap =
        m_mode == PickMode::Point && !(modifiers & Qt::ShiftModifier) ? snapNear(screen)
                                                                      : std::nullopt;
    const nxsim::SimObject* near = objectNear(screen);
    const unsigned int hover = m_mode == PickMode::Object && near ? near->tag : 0;
    const auto samePoint = [](const std::optional<SnapPoint>& a,
                              const std::optional<SnapPoint>& b) {
        return a.has_value() == b.has_value() && (!a || (a->at == b->at && a->kind == b->kind));
    };
    if (!samePoint(snap, m_snap) || hover != m_hoverTag) {
        m_snap = snap;
        m_hoverTag = hover;
        update();
    }
    QString text;
    if (m_snap) {
        // The exact coordinates that a click takes, as many digits as they have.
        text = tr("Snap X %1  Y %2 (%3)")
                   .arg(QString::number(m_snap->at.x(), 'g', 12))
                   .arg(QString::number(m_snap->at.y(), 'g', 12))
                   .arg(snapKindText(m_snap->kind));
    } else {
        const QPointF p = toPart(screen);
        text = tr("X %1  Y %2").arg(p.x(), 0, 'f', 2).arg(p.y(), 0, 'f', 2);
    }
    if (near) {
        text += tr("  object %1").arg(near->tag);
    }
    emit hovered(text);
}

void GraphicsView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!m_error.isEmpty()) {
        painter.setPen(Qt::white);
        painter.drawText(rect().adjusted(12, 12, -12, -12), Qt::TextWordWrap, m_error);
        return;
    }
    if (!m_part) {
        painter.setPen(QColor(220, 220, 220));
        painter.drawText(rect(), Qt::AlignCenter, tr("No display part"));
    } else {
        if (const nxsim::SimDrawing* sheet = drawing()) {
            const QRectF r(toScreen(0.0, sheet->height), toScreen(sheet->length, 0.0));
            painter.fillRect(r, QColor(250, 250, 246));
            painter.setPen(QPen(Qt::black, 1.0));
            painter.drawRect(r);
            painter.setPen(QColor(60, 60, 60));
            painter.drawText(r.adjusted(4, 2, -4, -2), Qt::AlignRight | Qt::AlignBottom,
                             QString::fromStdString(sheet->name));
        }
        for (const nxsim::SimObject& o : m_part->objects) {
            const bool lit = nxsim::highlighted(o.tag);
            const bool hovered = o.tag == m_hoverTag;
            QPen pen(hovered ? QColor(0, 170, 200)
                     : lit   ? QColor(255, 128, 0)
                             : QColor(20, 60, 170),
                     hovered || lit ? 3.0 : 1.5);
            painter.setPen(pen);
            const QPointF a = toScreen(o.start[0], o.start[1]);
            if (o.type == nxsim::SimObject::Line) {
                painter.drawLine(a, toScreen(o.end[0], o.end[1]));
            } else {
                painter.drawLine(a + QPointF(-4, -4), a + QPointF(4, 4));
                painter.drawLine(a + QPointF(-4, 4), a + QPointF(4, -4));
            }
        }
        if (m_marker) {
            painter.setPen(QPen(Qt::red, 2.0));
            const QPointF m = toScreen(m_marker->x(), m_marker->y());
            painter.drawEllipse(m, 5.0, 5.0);
        }
        if (m_snap) {
            // The marks of CAD systems: a square on a point or an end, a cross where lines
            // cross, a triangle on a middle.
            painter.setPen(QPen(QColor(0, 150, 60), 2.0));
            const QPointF m = toScreen(m_snap->at.x(), m_snap->at.y());
            switch (m_snap->kind) {
            case SnapPoint::Point:
            case SnapPoint::EndPoint:
                painter.drawRect(QRectF(m - QPointF(6, 6), m + QPointF(6, 6)));
                break;
            case SnapPoint::Intersection:
                painter.drawLine(m + QPointF(-6, -6), m + QPointF(6, 6));
                painter.drawLine(m + QPointF(-6, 6), m + QPointF(6, -6));
                break;
            case SnapPoint::MidPoint: {
                const QPointF triangle[] = {m + QPointF(0, -7), m + QPointF(6, 5),
                                            m + QPointF(-6, 5)};
                painter.drawPolygon(triangle, 3);
                break;
            }
            }
        }
        painter.setPen(Qt::white);
        painter.drawText(QRectF(8, 4, width() - 16, 20), Qt::AlignLeft,
                         QString::fromStdString(m_file));
    }
    if (m_mode != PickMode::None) {
        const QRectF banner(0, height() - kPromptBarHeight, width(), kPromptBarHeight);
        painter.fillRect(banner, QColor(255, 244, 180));
        painter.setPen(Qt::black);
        painter.drawText(banner.adjusted(8, 0, -8, 0), Qt::AlignVCenter,
                         m_prompt + (m_mode == PickMode::Point
                                         ? tr("  (click; Shift+click: no snapping; Esc or right "
                                              "click cancels)")
                                         : tr("  (click; Esc or right click cancels)")));
    }
}

void GraphicsView::mousePressEvent(QMouseEvent* event) {
    if (m_mode == PickMode::None) {
        return;
    }
    if (event->button() == Qt::RightButton) {
        emit pickCancelled();
        return;
    }
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const QPointF position = event->position();
    if (m_mode == PickMode::Point) {
        const std::optional<QPointF> snap =
            event->modifiers() & Qt::ShiftModifier ? std::nullopt : snapPointNear(position);
        const QPointF p = snap ? *snap : toPart(position);
        markPoint(p.x(), p.y());
        emit pointPicked(p.x(), p.y());
    } else if (const nxsim::SimObject* o = objectNear(position)) {
        emit objectPicked(o->tag);
    }
}

void GraphicsView::mouseMoveEvent(QMouseEvent* event) {
    track(event->position(), event->modifiers());
}

void GraphicsView::leaveEvent(QEvent* event) {
    m_cursor.reset();
    if (m_snap || m_hoverTag) {
        m_snap.reset();
        m_hoverTag = 0;
        update();
    }
    QWidget::leaveEvent(event);
}

void GraphicsView::keyReleaseEvent(QKeyEvent* event) {
    // Shift pressed or released while the cursor rests: the snap target follows at once.
    if (m_cursor && event->key() == Qt::Key_Shift) {
        track(*m_cursor, event->modifiers() & ~Qt::ShiftModifier);
    }
    QWidget::keyReleaseEvent(event);
}

void GraphicsView::keyPressEvent(QKeyEvent* event) {
    if (m_mode != PickMode::None && event->key() == Qt::Key_Escape) {
        emit pickCancelled();
        return;
    }
    // The modifiers of a Shift key event are not reliable across platforms; the key says it.
    if (m_cursor && event->key() == Qt::Key_Shift) {
        track(*m_cursor, event->modifiers() | Qt::ShiftModifier);
    }
    QWidget::keyPressEvent(event);
}

} // namespace QorfmtHost
