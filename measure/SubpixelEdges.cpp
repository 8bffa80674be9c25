#include "measure/SubpixelEdges.h"

#include "measure/kernels/ProfileKernels.h"

#include <algorithm>
#include <cmath>

namespace ormalux {

namespace {

/// Half the range of a run's positions over which steps keep their full weight, for sigma 1: what an ideal
/// edge spreads over, half a pixel and the spline's two, but for its thin ends.
constexpr double innerReach = 1.75;
/// From there the weight falls to nothing over so much.
constexpr double taper = 3;
/// Of the steps of a sharp edge: pixel, spline and where between two samples it lies.
constexpr double sharpVariance = 0.5;

} // namespace

bool validSettings(const CEdgeSettings& settings)
{
    return settings.contrast >= 0 && settings.contrast <= 255 && settings.sigma > 0 && settings.sigma <= 20 &&
           settings.width >= 1 && settings.width <= 1000;
}

EdgeFinder::EdgeFinder(const ConstGrayView& view, const CEdgeSettings& settings)
    : m_view(view), m_settings(settings), m_valid(validSettings(settings))
{
    if (!m_valid)
        return;
    const double sigma = settings.sigma;
    m_inner = innerReach * std::max(sigma, 1.0);
    m_outer = m_inner + taper * std::max(sigma, 2.0 / 3);
    m_beside = int(std::ceil(3 * sigma + 1));
    const double further = std::sqrt(std::max(sigma * sigma - EdgeProfile::splineVariance, 0.0));
    const int radius = int(std::ceil(3 * further));
    // Half as much again is the noise's, or the next edge's.
    m_sharpVariance = further * further + 1.5 * sharpVariance;
    double sum = 0;
    for (int i = 0; i <= radius; ++i) {
        const double z = further > 0 ? i / further : 0;
        m_kernel.push_back(float(std::exp(-0.5 * z * z)));
        sum += m_kernel.back() * (i > 0 ? 2 : 1);
    }
    for (float& weight : m_kernel)
        weight = float(weight / sum);
}

/// Where the run about the peak ends on that side: its last sample there. -1: the peak is not its highest.
int EdgeFinder::valley(int peak, int direction) const
{
    // A ramp that goes on for longer has no end that would matter.
    const int last = std::clamp(peak + direction * 8 * m_beside, 0, m_count - 1);
    const float sign = m_smooth[peak] > 0 ? 1.0f : -1.0f, height = sign * m_smooth[peak];
    float lowest = height;
    int at = peak;
    for (int i = peak; i != last; i += direction) {
        const float step = sign * m_smooth[i + direction];
        if (step <= 0)
            return i;
        if (lowest < 0.5f * height && step > 2 * lowest)
            return at;
        if (step > height || (direction < 0 && step == height)) // of equal peaks the first
            return -1;
        if (step < lowest) {
            lowest = step;
            at = i + direction;
        }
    }
    return last;
}

bool EdgeFinder::runAbout(int peak, Run& run) const
{
    const int last = valley(peak, 1), first = valley(peak, -1);
    if (first < 0 || last < 0)
        return false;
    run = {first, last + 1, peak, 0};
    const int end = std::min(run.end, peak + m_beside + 1);
    for (int i = std::max(first, peak - m_beside); i < end; ++i)
        run.contrast += m_smooth[i];
    // The last digits of the sum must not decide over a contrast that is just met.
    return run.contrast != 0 && std::abs(run.contrast) >= m_settings.contrast - 1e-3;
}

/// Where the next notable run on that side begins, between two samples; as far as the reach when there is
/// none within.
double EdgeFinder::neighbour(const Run& run, int direction, int reach) const
{
    const double notable = 0.25 * std::abs(run.contrast);
    int begin = direction > 0 ? run.end : run.first - 1;
    double sum = 0;
    for (int i = begin; i >= 0 && i < m_count && std::abs(i - run.peak) <= reach; i += direction) {
        if (sum * m_smooth[i] <= 0) {
            sum = 0;
            begin = i;
        }
        sum += m_smooth[i];
        if (std::abs(sum) < notable)
            continue;
        // Where the smoothed steps change their sign, or halfway in a valley.
        const double before = m_smooth[begin - direction], behind = m_smooth[begin];
        const double share = before * behind < 0 ? behind / (behind - before) : 0.5;
        return begin - direction * share;
    }
    return run.peak + direction * double(reach);
}

/// Where the run's smoothed steps have their centre, and their variance about it.
EdgeFinder::Centre EdgeFinder::centre(const Run& run) const
{
    double sum = 0, moment = 0, square = 0;
    const int last = std::min(run.end, run.peak + 3 * m_beside + 1);
    for (int i = std::max(run.first, run.peak - 3 * m_beside); i < last; ++i) {
        const double t = i - run.peak, step = m_smooth[i];
        sum += step;
        moment += step * t;
        square += step * t * t;
    }
    const double mean = moment / sum;
    return {run.peak + mean, square / sum - mean * mean};
}

/// How far to either side of the run's centre steps count.
double EdgeFinder::outerReach(const Run& run, const Centre& centre, double widening) const
{
    const double wanted = m_outer * widening;
    const double inside = std::max(m_outer, std::min(centre.at, m_count - 1 - centre.at));
    const int search = int(wanted) + m_beside;
    const double before = centre.at - neighbour(run, -1, search);
    const double behind = neighbour(run, 1, search) - centre.at;
    return std::max(0.75, std::min({wanted, inside, before, behind}));
}

double EdgeFinder::locate(const Run& run) const
{
    const Centre start = centre(run);
    // A blurred edge needs wider reaches; noise must not widen those of a sharp one.
    const double blur = std::sqrt(std::max(1.0, (start.variance - m_sharpVariance) / sharpVariance));
    const double widening = std::clamp(blur / std::max(m_settings.sigma, 1.0), 1.0, 3.0);
    const double outer = outerReach(run, start, widening);
    const double inner = std::min(m_inner * widening, 0.75 * outer);
    const double fall = inner / (outer - inner);
    const std::span<const float> steps = m_profile.steps();
    double u = start.at;
    for (int round = 0; round < 20; ++round) {
        const int first = std::max(0, int(std::ceil(u - outer)));
        const int last = std::min(int(steps.size()) - 1, int(std::floor(u + outer)));
        double sum = 0, slope = 0;
        for (int i = first; i <= last; ++i) {
            const double t = i - u, distance = std::abs(t), step = steps[i];
            const bool within = distance <= inner;
            const double weight = within ? distance : (outer - distance) * fall;
            sum += step * (t < 0 ? -weight : weight);
            slope += within ? step : -step * fall;
        }
        // A ramp longer than the reaches has no centre that they could see.
        if (!(slope / run.contrast > 0.15))
            return start.at;
        const double next = u + sum / slope;
        if (!(std::abs(next - start.at) <= 0.5 * inner))
            return start.at;
        const bool done = std::abs(next - u) < 1e-9;
        u = next;
        if (done)
            break;
    }
    return u;
}

void EdgeFinder::findAll(const ScanLine& scan)
{
    m_edges.clear();
    if (!m_valid || !m_profile.measure(m_view, scan, m_settings.width, std::ceil(m_outer)))
        return;
    const std::span<const float> steps = m_profile.steps();
    m_count = int(steps.size());
    m_room.resize(steps.size() + 2 * kernels::smoothRoom);
    float* smooth = m_room.data() + kernels::smoothRoom;
    kernels::smoothSteps(steps.data(), steps.size(), m_kernel.data(), int(m_kernel.size()) - 1, smooth);
    m_smooth = smooth;
    smooth[-1] = smooth[m_count] = 0;
    // Lower peaks have no run of the contrast.
    const float least = float(m_settings.contrast / (2 * m_beside + 1) * 0.999);
    for (int i = 0; i < m_count; ++i) {
        const float size = std::abs(smooth[i]);
        if (size < least || size < std::abs(smooth[i + 1]) || size <= std::abs(smooth[i - 1]))
            continue;
        Run run;
        if (!wanted(smooth[i]) || !runAbout(i, run))
            continue;
        const double position = m_profile.first() + locate(run);
        if (position >= 0 && position <= m_profile.length())
            m_edges.push_back({scan.x1 + position * m_profile.alongX(),
                               scan.y1 + position * m_profile.alongY(), position, std::abs(run.contrast),
                               run.contrast > 0 ? CEdgePolarity::DarkBright : CEdgePolarity::BrightDark});
    }
}

std::span<const CEdgePoint> EdgeFinder::find(const ScanLine& scan)
{
    if (m_settings.select != CEdgeSelect::All) {
        const CEdgePoint* one = findOne(scan);
        return {one, std::size_t(one ? 1 : 0)};
    }
    findAll(scan);
    return m_edges;
}

const CEdgePoint* EdgeFinder::findOne(const ScanLine& scan)
{
    findAll(scan);
    if (m_edges.empty())
        return nullptr;
    if (m_settings.select == CEdgeSelect::First)
        return &m_edges.front();
    if (m_settings.select == CEdgeSelect::Last)
        return &m_edges.back();
    return &*std::max_element(m_edges.begin(), m_edges.end(), [](const CEdgePoint& a, const CEdgePoint& b) {
        return a.contrast < b.contrast;
    });
}

} // namespace ormalux
