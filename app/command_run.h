// What the commands do alike on the way from a drawing to the answer.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "app/Drawing.h"
#include "app/options.h"
#include "app/progress.h"

namespace calcora::app {

/// One run of a command that works on a drawing; its time begins when it is made.
class CommandRun {
public:
    /// The options must outlive the run.
    explicit CommandRun(const DrawingOptions& options) : options_(options) {}

    Drawing readDrawing() const;

    /// Makes the output files, does the work and, unless it was interrupted, writes the files and
    /// puts them in their places. `task` is shown meanwhile.
    void work(const std::string& task, const std::function<void(Interrupt&)>& doWork,
              const std::function<void(Outputs&)>& write);

    bool interrupted() const { return interrupted_; }
    double seconds() const;

    /// Prints the answer; gives the exit status.
    int answer(const std::string& text) const;
    /// The same for a report, which is told what the run knows of itself.
    template <class Report>
    int answerWith(Report& report) const
    {
        report.interrupted = interrupted_;
        report.seconds = seconds();
        return answer(options_.json ? jsonText(report) : tableText(report));
    }

private:
    const DrawingOptions& options_;
    std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
    bool interrupted_ = false;
};

}  // namespace calcora::app
