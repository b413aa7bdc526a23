// Debug lines and reports of failed expectations, and where they go.
#pragma once

#include <string>

#include "tavrel/export.h"

namespace tav {

enum class MessageKind { Debug, Assertion };

/// One line on its way to the sink. The texts are valid during the call only.
struct MessageRecord {
    MessageKind kind;
    const char* text;
    const char* file;
    int line;
    const char* function;  ///< the empty text for assertions
};

/// Receives every debug line and assertion report. It may be called from any thread that uses the
/// library, one call at a time. What it throws is dropped; messages that it writes itself, and
/// those it threw at, go to the standard error stream.
using MessageSink = void (*)(const MessageRecord& record, void* context);

/// Where messages go, and what the sink is called with.
struct MessageTarget {
    MessageSink sink = nullptr;  ///< null: the standard error stream
    void* context = nullptr;
};

/// Directs messages to `target` from now on and returns the target before.
TAV_CORE_API MessageTarget setMessageTarget(MessageTarget target);

/// Hands a record to the present sink.
TAV_CORE_API void emitMessage(const MessageRecord& record) noexcept;

/// A debug line in the making; it is emitted when the stream is destroyed.
class TAV_CORE_API TavDebug {
public:
    TavDebug(const char* file, int line, const char* function);
    TavDebug(const TavDebug&) = delete;
    TavDebug& operator=(const TavDebug&) = delete;
    ~TavDebug();

    /// Appends the text; a null pointer appends nothing.
    TavDebug& operator<<(const char* text);

private:
    std::string text_;
    const char* file_;
    int line_;
    const char* function_;
};

/// `MessageLogger(file, line, function).debug() << "text";` writes one debug line.
class TAV_CORE_API MessageLogger {
public:
    MessageLogger(const char* file, int line, const char* function)
        : file_(file), line_(line), function_(function)
    {
    }
    TavDebug debug() const { return TavDebug(file_, line_, function_); }

private:
    const char* file_;
    int line_;
    const char* function_;
};

/// Reports a failed expectation; the caller goes on after the call.
TAV_CORE_API void tavAssert(const char* text, const char* file, int line);

}  // namespace tav

using tav::tavAssert;  // the host's functions are known without the namespace, too
