// Compiled once per instruction-set level, and so under the rules for kernels: nothing of std.
#include "kernels/machine_check.h"

#include "kernels/machine/machine.h"

namespace kel {
namespace {

class Random {
public:
    explicit Random(unsigned seed) : state_(seed * 2654435761U + 1) {}
    // Extremes more often than others.
    u8 byte() {
        state_ = state_ * 1664525 + 1013904223;
        const u32 value = state_ >> 8;
        return value % 4 == 0 ? (value & 16 ? 255 : 0) : static_cast<u8>(value >> 8);
    }
    template <class V> V vector() {
        u8 bytes[sizeof(V)];
        for (u8& b : bytes) b = byte();
        return load<V>(bytes);
    }

private:
    u32 state_;
};

// The same words in the order of machine M.
#define KEL_SPLIT(words)                                                                                               \
    [&] {                                                                                                              \
        u16 parts[2][N / 2];                                                                                           \
        for (int i = 0; i < N; ++i) parts[m::splitPart(i)][m::splitIndex(i)] = words[i];                               \
        return Split{load<Words>(parts[0]), load<Words>(parts[1])};                                                    \
    }()

template <class T> bool same(const T& a, const T& b) { return __builtin_memcmp(&a, &b, sizeof a) == 0; }

struct Memory {
    u8 bytes[6 * N];
};
template <class Store> Memory stored(Store store) {
    Memory memory;
    for (int i = 0; i < 6 * N; ++i) memory.bytes[i] = static_cast<u8>(i * 7);
    store(memory.bytes);
    return memory;
}

#define KEL_COMPARE(expression)                                                                                        \
    {                                                                                                                  \
        const auto byMachine = [&] {                                                                                   \
            namespace m = machine;                                                                                     \
            return expression;                                                                                         \
        }();                                                                                                           \
        const auto byDefinition = [&] {                                                                                \
            namespace m = plain;                                                                                       \
            return expression;                                                                                         \
        }();                                                                                                           \
        if (!same(byMachine, byDefinition)) return #expression;                                                        \
    }

struct Planes {
    Bytes a, b, c;
};
constexpr Weights bt601{77, 150, 29, 0}, bt709{54, 184, 18, 128}, chroma{-38, -74, 112, 128 + 128 * 256},
    negative{-128, 107, 21, 33023};

const char* inMemory(Random& random) {
    const Bytes a = random.vector<Bytes>(), b = random.vector<Bytes>(), c = random.vector<Bytes>();
    const auto source = random.vector<Memory>();
    const u8* s = source.bytes;
    const auto planes = [](auto separate) {
        Planes p;
        separate(p);
        return p;
    };
    KEL_COMPARE(planes([&](Planes& p) { m::load2(s, p.a, p.b), p.c = p.a; }))
    KEL_COMPARE(stored([&](u8* d) { m::store2(d, a, b), m::store2(d + 2 * N, as<Words>(b), as<Words>(c)); }))
    KEL_COMPARE(stored([&](u8* d) { m::store4(d, a, b, c, a); }))
    KEL_COMPARE(planes([&](Planes& p) { m::load3(s, p.a, p.b, p.c); }))
    KEL_COMPARE(planes([&](Planes& p) { m::load4(s, p.a, p.b, p.c); }))
    KEL_COMPARE(stored([&](u8* d) {
        Bytes v[4];
        m::load4(s, v), m::store4(d, v[3], v[1], v[0], v[2]);
    }))
    KEL_COMPARE(stored([&](u8* d) { m::store3<1>(d, 3 * L, a, b, c); }))
    KEL_COMPARE(stored([&](u8* d) { m::store3<1>(d, 3 * L, a); }))
    KEL_COMPARE(stored([&](u8* d) { m::store3<2>(d, 6 * L, a, b, c), m::store3<2>(d + 3 * L, 6 * L, b, c, a); }))
    KEL_COMPARE(stored([&](u8* d) { m::store3<2>(d, 6 * L, a), m::store3<2>(d + 3 * L, 6 * L, b); }))
    KEL_COMPARE(stored([&](u8* d) { m::store3of4(d, a, b, c); }))
    KEL_COMPARE(stored([&](u8* d) { m::store3of4(d, a); }))
    KEL_COMPARE(stored([&](u8* d) { m::storeQuads(d, as<Bytes>(as<UnsignedWides>(a) & 0xFFFFFF)); }))
    KEL_COMPARE(stored([&](u8* d) {
        Bytes v[4];
        m::loadRow(s, v), m::storeRow(d, v);
    }))
    KEL_COMPARE(m::wordsAt(s, 2 * L, [](int i) { return (5 * i + 2) % (L - 1); }))
    KEL_COMPARE((m::luma<3, bt601>(s)))
    KEL_COMPARE((m::luma<3, bt709>(s)))
    KEL_COMPARE((m::luma<4, bt601>(s)))
    KEL_COMPARE((m::luma<4, bt709>(s)))
    KEL_COMPARE((m::weigh<3, Weights{21, 72, 7, 0}>(s)))
    KEL_COMPARE((m::weigh<4, Weights{21, 72, 7, 0}>(s)))
    KEL_COMPARE((m::clamp(m::weighWithin<3, Weights{1, 2, 3, -600}>(s + L))))
    // These two have no definition that is simpler than what it defines.
    Planes p;
    machine::load4(s, p.a, p.b, p.c);
    const Memory memory = stored([&](u8* d) { machine::store3of4(d, p.a, p.b, p.c); });
    for (int i = 0; i < 4 * N; ++i)
        if (memory.bytes[i] != (i % 4 == 3 ? static_cast<u8>(i * 7) : s[i])) return "load4, store3of4";
    return nullptr;
}

const char* ofBytesAndWords(Random& random) {
    const Bytes a = random.vector<Bytes>(), b = random.vector<Bytes>();
    const Words v = random.vector<Words>(), w = random.vector<Words>();
    const Ints x = as<Ints>(v), y = as<Ints>(w);
    KEL_COMPARE(m::place(a, [](int i) { return i % 3 == 1 ? -1 : (5 * i + 2) % L; }))
    KEL_COMPARE(m::lowBytes(Halves{v, w}))
    KEL_COMPARE(m::highBytes(Halves{v, w}))
    KEL_COMPARE(m::highBytes(a, b, as<Bytes>(v)[0] % 8))
    KEL_COMPARE(m::highBytesByTurns(v, w))
    KEL_COMPARE(m::inRow(a))
    KEL_COMPARE(m::shiftUp(w, a[0] % 16))
    KEL_COMPARE(m::lookUp(a, b, as<Bytes>(w) % (2 * L)))
    const auto exchanged = [&](auto exchange) {
        Planes p{a, b, as<Bytes>(a > b)};
        exchange(p.c, p.a, p.b);
        return p;
    };
    KEL_COMPARE(exchanged([](Bytes mask, Bytes& p, Bytes& q) { m::exchange(mask, p, q); }))
    KEL_COMPARE(m::meanUp(a, b))
    KEL_COMPARE(m::meanUp(v, w))
    KEL_COMPARE(m::mean(a, b))
    KEL_COMPARE(m::mean(v, w))
    KEL_COMPARE(m::mean(a, b, as<Bytes>(v), as<Bytes>(w)))
    KEL_COMPARE(m::addSaturated(a, b))
    KEL_COMPARE(m::addSigned(a, b))
    KEL_COMPARE(m::meanSigned(a, b))
    KEL_COMPARE(m::meanSigned(a, b, as<Bytes>(v), as<Bytes>(w)))
    KEL_COMPARE(m::signedPairSums(a))
    KEL_COMPARE(m::eighths(as<Words>(x >> 5)))
    KEL_COMPARE(m::eighths(Halves{as<Words>(x >> 5), as<Words>(y >> 5)}))
    KEL_COMPARE(m::productDown<25264>(a))
    KEL_COMPARE(m::zeros(a))
    KEL_COMPARE(m::swapped(w))
    KEL_COMPARE(m::times(w, 107))
    KEL_COMPARE(m::mulHigh(x, as<Ints>(y == -0x8000 ? as<Words>(y) + 1 : as<Words>(y))))
    KEL_COMPARE((m::pairSums<1, 1>(a)))
    KEL_COMPARE(m::addPairSums(v, a))
    KEL_COMPARE((m::pairSums<-1, 1>(a)))
    KEL_COMPARE((m::pairSums<1, -1>(a)))
    KEL_COMPARE((m::pairSums<4, 0>(a)))
    KEL_COMPARE((m::pairSums<0, 4>(a)))
    KEL_COMPARE(m::weighPairs(a, m::fillBytePairs(77, 29)))
    KEL_COMPARE(m::weighPairs(a, m::fillBytePairs(-128, 112)))
    KEL_COMPARE(m::clampHalves(x >> 6, y >> 6))
    KEL_COMPARE(m::clampPairs(x >> 6, y >> 6))
    KEL_COMPARE(m::clampPairs(x, y))
    return nullptr;
}

const char* ofSplits(Random& random) {
    const Bytes r = random.vector<Bytes>(), g = random.vector<Bytes>(), b = random.vector<Bytes>();
    const Words w = random.vector<Words>();
    u16 words[N];
    store(words, w), store(words + N / 2, random.vector<Words>());
    KEL_COMPARE(m::inOrder(m::widen(r)))
    KEL_COMPARE(m::inOrder(m::widen<6>(r)))
    KEL_COMPARE(m::inOrder(m::forPairs(w)))
    KEL_COMPARE(m::lowBytes(KEL_SPLIT(words)))
    KEL_COMPARE(m::highBytes(KEL_SPLIT(words)))
    KEL_COMPARE(m::clamp(KEL_SPLIT(words)))
    KEL_COMPARE(m::clamp<2>(KEL_SPLIT(words)))
    KEL_COMPARE(m::inOrder(m::sums(r, g)))
    KEL_COMPARE(m::inOrder(m::differences(r, g)))
    KEL_COMPARE(m::inOrder(m::sums<2>(r, g, b)))
    KEL_COMPARE(m::inOrder(m::sums<-2>(r, g, b)))
    KEL_COMPARE(m::inOrder(KEL_SPLIT(words)))
    KEL_COMPARE(stored([&](u8* d) { m::store3(d, 3 * L, m::widen(r), KEL_SPLIT(words), m::widen<6>(b)); }))
    KEL_COMPARE(m::pairMeans(KEL_SPLIT(words)))
    KEL_COMPARE(m::luma<bt601>(r, g, b))
    KEL_COMPARE(m::luma<bt709>(r, g, b))
    KEL_COMPARE(m::inOrder(m::products<77>(r)))
    KEL_COMPARE(m::inOrder(m::products<184, -128>(g, b)))
    KEL_COMPARE(m::inOrder(m::products<150, 77, 29>(g, r, b)))
    KEL_COMPARE(m::inOrder(m::weigh<bt709>(r, g, b)))
    KEL_COMPARE(m::inOrder(m::weigh<chroma>(r, g, b)))
    KEL_COMPARE(m::inOrder(m::weigh<negative>(r, g, b)))
    return nullptr;
}

const char* in32Bits(Random& random) {
    const Words u = random.vector<Words>(), v = random.vector<Words>(), w = random.vector<Words>();
    const int j = random.byte() * 90 - 9000, k = random.byte() * 30;
    KEL_COMPARE(m::weigh<bt709>(u, v, w))
    KEL_COMPARE(m::wordPairSums(u, as<Words>(as<Ints>(v) >> 1)))
    KEL_COMPARE(m::wordsOf<10>(m::weigh(m::pairUp(u, v), m::PairFactors{j, k})))
    KEL_COMPARE(m::wordsOf<8>(m::clampSums(m::weigh(m::pairUp(u, v), m::PairFactors{j, k}), -(1 << 22), 1 << 23)))
    KEL_COMPARE(m::clampedWords<10>(m::weigh(m::tripleUp(u, v, w), m::TripleFactors{j, k, -j})))
    KEL_COMPARE(m::wordsOf<16>(m::weigh(m::tripleUp(u, v, w), m::TripleFactors{j, k, -j})))
    return nullptr;
}

const char* firstFault(unsigned seed) {
    Random random(seed);
    for (const auto check : {inMemory, ofBytesAndWords, ofSplits, in32Bits})
        if (const char* fault = check(random)) return fault;
    return nullptr;
}

} // namespace

namespace KEL_LEVEL {

extern const MachineCheck machineCheck;
constexpr MachineCheck machineCheck{firstFault};

} // namespace KEL_LEVEL
} // namespace kel
