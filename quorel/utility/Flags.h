// A small set of bit flags, passed by value.
#ifndef QUOREL_UTILITY_FLAGS_H
#define QUOREL_UTILITY_FLAGS_H

namespace quorel {
namespace utility {

/// A set of bits of the unsigned integer type Bits.  Converts implicitly from
/// Bits, so that a constant or an or-ed combination of constants can be passed
/// where a Flags is expected.
template <class Bits>
class Flags {
public:
    constexpr Flags(Bits inBits = Bits()) noexcept : mBits(inBits) {}  // NOLINT: implicit by design

    /// All bits of the set.
    constexpr Bits Get() const noexcept { return mBits; }
    /// True when every bit of inBits is set.
    constexpr bool IsSet(Bits inBits) const noexcept { return (mBits & inBits) == inBits; }
    /// Sets the bits of inBits.
    constexpr void Set(Bits inBits) noexcept { mBits = static_cast<Bits>(mBits | inBits); }
    /// Clears the bits of inBits.
    constexpr void Clear(Bits inBits) noexcept { mBits = static_cast<Bits>(mBits & ~inBits); }

    friend constexpr bool operator==(Flags inA, Flags inB) noexcept { return inA.mBits == inB.mBits; }
    friend constexpr bool operator!=(Flags inA, Flags inB) noexcept { return inA.mBits != inB.mBits; }

private:
    Bits mBits;
};

}  // namespace utility
}  // namespace quorel

#endif
