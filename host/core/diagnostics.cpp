#include "tavrel/diagnostics.h"

#include <cstdio>
#include <mutex>
#include <utility>

namespace tav {

namespace {

struct Diagnostics {
    std::recursive_mutex mutex;  // a sink may write messages and set targets itself
    MessageTarget target;
    bool inSink = false;
};

/// Never destroyed: static objects of other libraries may still write messages at exit.
Diagnostics& diagnostics()
{
    static Diagnostics& instance = *new Diagnostics;
    return instance;
}

const char* orEmpty(const char* text)
{
    return text ? text : "";
}

void writeToStandardError(const MessageRecord& record)
{
    const char* kind = record.kind == MessageKind::Assertion ? "assertion failed" : "debug";
    std::fprintf(stderr, "%s: %s (%s:%d)\n", kind, record.text, record.file, record.line);
}

}  // namespace

MessageTarget setMessageTarget(MessageTarget target)
{
    const std::lock_guard lock(diagnostics().mutex);
    return std::exchange(diagnostics().target, target);
}

void emitMessage(const MessageRecord& record) noexcept
{
    Diagnostics& state = diagnostics();
    const std::lock_guard lock(state.mutex);
    const MessageTarget target = state.target;
    if (!target.sink || state.inSink) {
        writeToStandardError(record);
        return;
    }
    state.inSink = true;
    try {
        target.sink(record, target.context);
    } catch (...) {
        writeToStandardError(record);
    }
    state.inSink = false;
}

TavDebug::TavDebug(const char* file, int line, const char* function)
    : file_(orEmpty(file)), line_(line), function_(orEmpty(function))
{
}

TavDebug::~TavDebug()
{
    emitMessage({MessageKind::Debug, text_.c_str(), file_, line_, function_});
}

TavDebug& TavDebug::operator<<(const char* text)
{
    text_ += orEmpty(text);
    return *this;
}

void tavAssert(const char* text, const char* file, int line)
{
    emitMessage({MessageKind::Assertion, orEmpty(text), orEmpty(file), line, ""});
}

}  // namespace tav
