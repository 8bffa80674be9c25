#pragma once

#include "image/VisionImage.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <vector>

/// Pictures whose edges lie where plain geometry says: every pixel is the mean of the scene over its square.
namespace testing_support {

inline double radians(double degrees)
{
    return degrees * std::numbers::pi / 180;
}

/// A picture in real levels, as a lens would give it to a sensor; the camera adds its noise and rounds.
class DrawnTruth
{
public:
    DrawnTruth(int width, int height, double level) : m_width(width), m_height(height)
    {
        m_levels.assign(std::size_t(width) * height, level);
    }

    double& at(int x, int y) { return m_levels[std::size_t(y) * m_width + x]; }

    /// Gives the half-plane nx * x + ny * y > d, with a unit normal, the level.
    void drawHalfPlane(double nx, double ny, double d, double level)
    {
        forEach([&](double x, double y, double& p) {
            p += (level - p) * halfPlaneCover(nx, ny, d - nx * x - ny * y);
        });
    }
    /// Gives the disc the level; pixels at its rim by 64 x 64 points each.
    void drawDisc(double cx, double cy, double radius, double level)
    {
        forEach([&](double x, double y, double& p) {
            const double distance = std::hypot(x - cx, y - cy);
            if (std::abs(distance - radius) > 0.75) {
                p = distance < radius ? level : p;
                return;
            }
            int inside = 0;
            for (int i = 0; i < 64 * 64; ++i) {
                const double dx = x + (i % 64 + 0.5) / 64 - 0.5 - cx, dy = y + (i / 64 + 0.5) / 64 - 0.5 - cy;
                inside += dx * dx + dy * dy < radius * radius;
            }
            p += (level - p) * inside / (64 * 64);
        });
    }
    /// Gives whole pixels the level: dirt, scratches.
    void drawBox(int left, int top, int right, int bottom, double level)
    {
        for (int y = std::max(top, 0); y < std::min(bottom, m_height); ++y)
            for (int x = std::max(left, 0); x < std::min(right, m_width); ++x)
                at(x, y) = level;
    }

    /// What the camera gives: normal noise, rounded to levels.
    CKestImage shot(double noise = 0, unsigned seed = 1) const
    {
        std::mt19937 engine(seed);
        std::vector<std::uint8_t> pixels(m_levels.size());
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            const double level = m_levels[i] + (noise > 0 ? noise * normal(engine) : 0);
            pixels[i] = std::uint8_t(std::clamp(level + 0.5, 0.0, 255.0));
        }
        return CKestImage(m_width, m_height, pixels.data());
    }

    int width() const { return m_width; }
    int height() const { return m_height; }

private:
    /// Of the unit square about the origin, the share where nx * x + ny * y > d.
    static double halfPlaneCover(double nx, double ny, double d)
    {
        const double a = std::max(std::abs(nx), std::abs(ny)), b = std::min(std::abs(nx), std::abs(ny));
        const double from = d + (a + b) / 2;
        if (from <= 0 || from >= a + b)
            return from <= 0 ? 1 : 0;
        if (b < 1e-9)
            return 1 - from / a;
        const auto half = [](double v) { return v > 0 ? v * v / 2 : 0; };
        return 1 - (half(from) - half(from - a) - half(from - b)) / (a * b);
    }
    /// The same on every standard library.
    static double normal(std::mt19937& engine)
    {
        const double u = (engine() + 1.0) / 4294967297.0, v = engine() / 4294967296.0;
        return std::sqrt(-2 * std::log(u)) * std::cos(2 * std::numbers::pi * v);
    }
    template <class Body>
    void forEach(Body body)
    {
        for (int y = 0; y < m_height; ++y)
            for (int x = 0; x < m_width; ++x)
                body(double(x), double(y), at(x, y));
    }

    int m_width;
    int m_height;
    std::vector<double> m_levels;
};

/// Mean, spread and largest size of errors.
struct ErrorStatistics
{
    int count = 0;
    double sum = 0;
    double squares = 0;
    double worst = 0;

    void add(double error)
    {
        ++count;
        sum += error;
        squares += error * error;
        worst = std::max(worst, std::abs(error));
    }
    double mean() const { return sum / count; }
    double spread() const { return std::sqrt(std::max(squares / count - mean() * mean(), 0.0)); }
};

} // namespace testing_support
