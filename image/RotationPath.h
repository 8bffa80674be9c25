#pragma once

#include <cstdint>

namespace ormalux {

/// A range of columns, end exclusive.
struct ColumnRange
{
    int first;
    int end;
};

/// What moves the pixels of one source row: with dx the column's distance from the centre, in single
/// precision, they go to column trunc(dx * ca - dySin + cx) and row trunc(dx * sa + dyCos + cy).
struct RotationRow
{
    double ca;
    double sa;
    double cx;
    double cy;
    double dySin;
    double dyCos;

    double column(double dx) const { return dx * ca - dySin + cx; }
    double row(double dx) const { return dx * sa + dyCos + cy; }
};

/// A rotation's arithmetic, bit for bit.
class RotationPath
{
public:
    RotationPath(int width, int height, int cx, int cy, double angle);

    double ca() const { return m_ca; }
    double sa() const { return m_sa; }
    int width() const { return m_width; }
    int cx() const { return m_cx; }
    int cy() const { return m_cy; }
    RotationRow sourceRow(int y) const;
    double dx(int x) const { return double(float(std::int64_t(x) - m_cx)); }
    /// Whether single precision holds every distance from the centre, as it does for centres near the
    /// picture.
    bool exactDistances() const { return m_exact; }

    /// The source rows outside of which no pixel goes to the target rows from top up to, excluding, end.
    ColumnRange sourceRows(int top, int end) const;
    /// The columns of a source row whose pixels go to the target rows from top up to, excluding, end.
    ColumnRange sourceColumns(const RotationRow& row, int top, int end) const;

private:
    template <class Position, class Before>
    int firstColumn(int first, int end, double guess, Position position, Before before) const;

    int m_width;
    int m_height;
    int m_cx;
    int m_cy;
    double m_ca;
    double m_sa;
    bool m_exact;
};

} // namespace ormalux
