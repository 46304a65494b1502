#pragma once

/// Memory that ends: while an object of this class lives, no memory can be had after some allocations.
/// Allocations.cpp stands between all libraries and the C library.
class EndOfMemory
{
public:
    EndOfMemory(const EndOfMemory&) = delete;
    EndOfMemory& operator=(const EndOfMemory&) = delete;

    enum class Failing {
        One,     ///< only the one after \p allocations
        AllLater ///< and each after it
    };

    explicit EndOfMemory(long allocations, Failing failing = Failing::AllLater);
    ~EndOfMemory();

    /// Whether an allocation has failed meanwhile.
    static bool hasCome();
};
