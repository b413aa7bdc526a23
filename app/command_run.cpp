#include "app/command_run.h"

#include "app/dxf_reader.h"
#include "app/user_error.h"

namespace calcora::app {

Drawing CommandRun::readDrawing() const
{
    const Progress progress("reading " + options_.input);
    return readDxf(options_.input, {options_.layers, options_.ellipseTolerance});
}

void CommandRun::work(const std::string& task, const std::function<void(Interrupt&)>& doWork,
                      const std::function<void(Outputs&)>& write)
{
    Interrupt interrupt;
    Outputs outputs(options_);
    {
        const Progress progress(task);
        doWork(interrupt);
        try {
            if (!interrupt.raised()) write(outputs);
        } catch (const Interrupted&) {
            // The outputs vanish unfinished.
        }
    }
    interrupted_ = interrupt.raised();
    if (!interrupted_) outputs.commit();
}

double CommandRun::seconds() const
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin_).count();
}

int CommandRun::answer(const std::string& text) const
{
    printAnswer(text);
    return interrupted_ ? kInterruptedStatus : kDoneStatus;
}

}  // namespace calcora::app
