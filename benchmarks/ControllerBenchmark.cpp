// What it costs to change a controller's data under its lock and to have its view redrawn.

#include "RatioReporter.h"

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/Updateable.h>

#include <QtCore/QMutex>

namespace housekeeping = tarqa::housekeeping;

namespace {

unsigned long long s_updates = 0; // keeps the views from being empty

class View : public housekeeping::Updateable
{
public:
    explicit View(housekeeping::AbstractController& controller) { register_controller(&controller); }
    ~View() override { unregister(); }

private:
    void update() override { ++s_updates; }
};

/// The peer: what a controller without a framework would call its view through.
class AbstractView
{
public:
    virtual ~AbstractView() = default;
    virtual void update() = 0;
};

class PlainView : public AbstractView
{
public:
    void update() override { ++s_updates; }
};

void controller_locker(benchmark::State& state)
{
    housekeeping::AbstractController controller;
    const View view(controller);
    const unsigned long long before = s_updates;
    for (auto _ : state) {
        housekeeping::ControllerLocker locker(controller);
        locker.finished();
    }
    if (s_updates - before != static_cast<unsigned long long>(state.iterations())) {
        state.SkipWithError("not every change was shown");
    }
}
BENCHMARK(controller_locker);

void recursive_mutex(benchmark::State& state)
{
    QMutex mutex(QMutex::Recursive);
    PlainView plain_view;
    AbstractView* p_view = &plain_view;
    benchmark::DoNotOptimize(p_view); // or the compiler would know whose update() that is
    const unsigned long long before = s_updates;
    for (auto _ : state) {
        mutex.lock();
        p_view->update();
        mutex.unlock();
    }
    if (s_updates - before != static_cast<unsigned long long>(state.iterations())) {
        state.SkipWithError("not every change was shown");
    }
}
BENCHMARK(recursive_mutex);

const Ratio s_locker("ControllerLocker, one view / recursive QMutex and a virtual call", "controller_locker",
    "recursive_mutex", 1.3);

} // namespace
