#include "steps/Runner.h"

#include "steps/Upright.h"

#include <chrono>
#include <new>

namespace ormalux {

namespace {

void runStep(const BoundStep& bound, std::size_t number, InspectionData& data)
{
    Findings& found = data.findings[number];
    found.start(bound.layout);
    Work& work = data.work;
    work.frame = nullptr;
    work.findings = std::span(data.findings).first(number);
    if (bound.frame >= 0) {
        const auto& motion = data.motions[std::size_t(bound.frame)];
        if (!motion) { // its frame was not found: it finds nothing
            if (bound.step->name == "frame")
                data.failed.push_back({nullptr, {}, bound.name, "its frame was not found"});
            return;
        }
        work.frame = &*motion;
    }
    work.motion.reset();
    work.missing.clear();
    if (bound.upright)
        runUpright(*bound.operation, bound.roi, work, found);
    else
        bound.operation->run(work, found);
    found.finish();
    if (work.motion)
        data.motions[number] = work.motion;
    else if (!work.missing.empty())
        data.failed.push_back({nullptr, {}, bound.name, work.missing});
    if (data.plan->scale.isSet())
        for (std::size_t row = 0; row < found.rows(); ++row)
            data.plan->scale.convert(found, row);
}

void judge(InspectionData& data)
{
    for (const Limit& limit : data.plan->limits) {
        Measured value = measure(limit, data.findings[std::size_t(limit.step)]);
        if (!fits(limit, value))
            (limit.warns ? data.warned : data.failed).push_back({&limit, std::move(value), {}, {}});
    }
}

} // namespace

bool InspectionData::foundAny() const
{
    bool measures = false;
    for (const Findings& found : findings) {
        if (found.rows() > 0)
            return true;
        measures = measures || !found.layout().list.empty();
    }
    return !measures;
}

bool InspectionData::judged() const
{
    return plan && (!plan->limits.empty() || !failed.empty());
}

int InspectionData::verdict() const
{
    if (!ran())
        return -1;
    return judged() ? failed.empty() : foundAny();
}

void runPlan(const std::shared_ptr<const RecipePlan>& plan, const FrameSource& source, InspectionData& data)
{
    const auto begin = std::chrono::steady_clock::now();
    data.plan = plan;
    data.error.clear();
    data.warning.clear();
    data.failed.clear();
    data.warned.clear();
    data.hasJson = false;
    try {
        if (!plan || plan->steps.empty())
            throw PictureError("there is no recipe");
        data.findings.resize(plan->steps.size());
        data.motions.assign(plan->steps.size(), std::nullopt);
        for (std::size_t i = 0; i < plan->steps.size(); ++i)
            data.findings[i].start(plan->steps[i].layout);
        data.warning = takeFrame(source, plan->bits, data.work);
        for (std::size_t i = 0; i < plan->steps.size(); ++i)
            runStep(plan->steps[i], i, data);
        judge(data);
    } catch (const PictureError& error) {
        data.error = error.what();
    } catch (const std::bad_alloc&) {
        data.error = "too little memory";
    }
    data.work.frame = nullptr;
    data.work.findings = {};
    data.milliseconds =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

} // namespace ormalux
