// Every operation of the module as a row of a table, called with arguments made from bytes.
#pragma once

#include <cstdint>
#include <typeinfo>
#include <vector>

#include "fuzz/source.h"

namespace fuzz {

class Call;

/// How much room a caller's array has, by the polylines that are handed over with it.
struct Room {
    int factor = 1;
    int polylines = 0;  ///< 0: factor; 1: factor (m - 1) of the last; 2: factor (n - 1) (m - 1)
};

/// What is particular about an operation.
enum Flag : unsigned {
    kInfinite = 1,      ///< finite arguments may give infinity or not-a-number
    kWritesAlways = 2,  ///< writes outputs with the results false and -1, too
    kTolerance = 4,     ///< its numbers are mostly such that curves stay short
    kPlaces = 8,        ///< its outputs that are plain numbers are x and y by turns
    kAbsolute =
        16,  ///< knows the origin: takes vectors or plain coordinates, gives an empty list a place
};

struct Operation {
    const char* name;
    void (*run)(Call&);
    Room room;
    unsigned flags = 0;
    int slot = 0;
    const std::type_info* member;  ///< the type of a pointer to it: its interface and signature
};

struct Family {
    const char* name;
    std::vector<Operation> operations;
};

/// All 262 operations.
const std::vector<Family>& families();

/// What a call wrote and returned.
struct Outcome {
    enum Kind : char { Count, Number, X, Y };
    struct Item {
        Kind kind;
        double value;
    };
    std::vector<Item> items;
    bool isWanted = true;

    std::uint64_t digest() const;
};

/// Loads the plugins once, for the rest of the process.
void loadPlugins();

/// The objects and arguments of calls one after another. Ends the program with a message when a
/// call breaks a promise that holds for all operations: array bounds, outputs left alone, no
/// exception, results of bounded size, and finite ones for finite arguments.
class Call {
public:
    explicit Call(Source& bytes);
    ~Call();
    Call(const Call&) = delete;

    /// One call of the operation with new arguments and the objects of earlier calls.
    void run(const Operation& operation, Outcome& outcome);

    Source& source;
    int refusedCreation = -1;      ///< the creation of each call that the host refuses
    bool hasRefused = false;       ///< whether the last call came to that one
    bool letsBadAllocOut = false;  ///< std::bad_alloc passes through instead of ending the program
    void (*onCall)(bool begins) = nullptr;  ///< called around the operation itself
    struct State;
    State& state() { return *state_; }

private:
    State* state_;
};

}  // namespace fuzz
