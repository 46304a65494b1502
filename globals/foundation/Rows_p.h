#pragma once

#include <cstddef>

namespace TEKLUVA {

/// The rows of a constant table, counted by the compiler. Only points to them: for tables that live as long
/// as the library.
template <typename Row>
class Rows
{
public:
    template <std::size_t COUNT>
    explicit constexpr Rows(const Row (&rows)[COUNT])
        : m_begin(rows)
        , m_end(rows + COUNT)
    {
    }

    constexpr const Row* begin() const { return m_begin; }
    constexpr const Row* end() const { return m_end; }
    constexpr std::size_t size() const { return static_cast<std::size_t>(m_end - m_begin); }

private:
    const Row* m_begin;
    const Row* m_end;
};

} // namespace TEKLUVA
