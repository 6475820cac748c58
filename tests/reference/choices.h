// SPDX-License-Identifier: MIT
// The source of the choices of a generated case: a seeded random generator, or the bytes of a fuzzer.
#pragma once

#include <cstddef>
#include <cstdint>

namespace reference {

class Choices {
public:
    explicit Choices(std::uint64_t seed) : State_(seed) {}
    Choices(const std::uint8_t* bytes, std::size_t count) : Bytes_(bytes), Left_(count) {}

    /// Returns a number from 0 to `count` - 1. After the last byte of a fuzzer each further byte is 0, so a case
    /// must end if it always takes the first choice.
    std::uint32_t Below(std::uint32_t count) {
        if (count < 2)
            return 0;
        if (Bytes_ == nullptr)
            return static_cast<std::uint32_t>((Next() >> 32U) * count >> 32U);
        std::uint32_t number = TakeByte();
        for (std::uint32_t reached = 256; reached < count && reached != 0; reached <<= 8U)
            number = number << 8U | TakeByte();
        return number % count;
    }
    bool OneIn(std::uint32_t count) { return Below(count) == count - 1; }
    template <typename Each, std::size_t Count>
    const Each& Of(const Each (&list)[Count]) {
        return list[Below(static_cast<std::uint32_t>(Count))];
    }

private:
    /// splitmix64, as Vigna published it: the same on every machine, and good with any seed.
    std::uint64_t Next() {
        State_ += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = State_;
        mixed = (mixed ^ mixed >> 30U) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ mixed >> 27U) * 0x94D049BB133111EBU;
        return mixed ^ mixed >> 31U;
    }
    std::uint32_t TakeByte() {
        if (Left_ == 0)
            return 0;
        --Left_;
        return *Bytes_++;
    }

    std::uint64_t State_ = 0;
    const std::uint8_t* Bytes_ = nullptr;
    std::size_t Left_ = 0;
};

} // namespace reference
