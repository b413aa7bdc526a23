#include "tavrel/diagnostics.h"

#include <cstdio>
#include <mutex>
#include <utility>

namespace tav
{

namespace
{

struct Diagnostics {
    std::mutex mutex;
    MessageTarget target;
};

Diagnostics& diagnostics()
{
    static Diagnostics instance;
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

void emitMessage(const MessageRecord& record)
{
    const std::lock_guard lock(diagnostics().mutex);
    const MessageTarget target = diagnostics().target;
    if (target.sink)
        target.sink(record, target.context);
    else
        writeToStandardError(record);
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
