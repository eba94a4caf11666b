// What differs between machines: vector sizes, and the operations for which a machine has instructions of its own. Each
// machine has one file, which provides all that is listed here; what it has no better form of it takes from plain.h,
// which needs nothing but the compilers' vector arithmetic and is the definition of every operation. A test compares
// them, at every level.
//
//     file     levels                N        L
//     plain    plain                16       16   any little-endian machine; x86-64 before SSSE3
//     x86      sse4                 16       16   also WebAssembly, by emscripten's headers for SSE
//              avx2                 32       16
//              avx512               64       64
//     neon     neon                 16       16   aarch64
//
// N: bytes in a vector. L: bytes in one of its lanes, the width in which one instruction permutes bytes.
//
// Pixels in memory, lane by lane (`step` bytes from one to the next)
//     load2(s, a, b)                   two vectors out of pairs of bytes or words, without lanes
//     store2(d, a, b)                  as pairs
//     store4(d, v, w, x, y)            as quadruples of bytes
//     load3(s, a, b, c)                three planes out of pixels of 3 bytes
//     load4(s, a, b, c)                three planes out of pixels of 4 bytes, without the fourth
//     load4(s, v)                      four vectors out of quadruples of bytes, without lanes
//     store3<unit>(d, step, a, b, c)   one vector of each plane as triples of elements of `unit` bytes
//     store3(d, step, a, b, c)         Splits of signed words, clamped to 0..255, as triples of bytes
//     store3of4(d, a, b, c)            as quadruples of bytes; the fourth byte in memory is kept
//     loadRow(s, v), storeRow(d, v)    four vectors that lie side by side
//     wordsAt(s, step, at)             words out of L bytes, from positions at(0), at(1) and so on, which the compiler knows
//     storeQuads(d, v)                 v but for every fourth byte, which is 0 in v and kept in memory
//     luma<bytes, k>(s)                luma<k>() of N pixels of 3 or 4 bytes; k.r weighs the first, k.b the third
//     weigh<bytes, k>(s)               k.r R + k.g G + k.b B + k.add, as Halves, with weights from 0 to 127
//     weighWithin<bytes, k>(s)         the same as Quarters, of pixels with others around them, of which it reads up to
//                                      L / 4 bytes
//     moveOn<pixelwise>(p, bytes)      p += bytes, in a loop; pixelwise: one of the loads or stores above uses p
//     prefetch<bytes, forWriting>(p)   asks for what a loop at p reads or writes some blocks later; small loops pass
//                                      prefetchDistance(), which they took before
//     pacesLoops                       whether loops may be better off without prefetching, in pieces (kernels/pace.h)
//     separatesAsItLoads               whether load2, load3 and load4 cost no more than loads. Then even and odd columns
//                                      of mosaics are kept apart (Apart).
//     movesAsItLoads                   whether these move their addresses on at no cost. Then loops over mosaics keep one
//                                      for each row, and not one index for all
//
// Bytes and words
//     place(v, at)         within each lane, at positions that the compiler knows; those below 0 make 0
//     lookUp(a, b, at)     within each lane, from two vectors, at positions known at run time only; those from L on mean b
//     exchange(mask, a, b) changes over the bytes of a and b where the mask has 255, not 0
//     meanUp(a, b)         (a + b + 1) >> 1, of bytes or words
//     mean(a, b)           (a + b) >> 1
//     mean(a, b, c, d)     (a + b + c + d) >> 2, of bytes
//     addSaturated(a, b)   bytes, at most 255
//     meanSigned(a, b), meanSigned(a, b, c, d)   of signed bytes, rounded down
//     addSigned(v, s)      v + s of signed bytes, at least 0 and at most 255
//     productDown<k>(s)    k / 2^15 of signed bytes, rounded down; plus 1 below 0
//     addsSignedBytes      whether these three take an instruction or few. Then chroma is kept in bytes
//     zeros(v)             a bit for each byte, the lowest for the first one: 1 where the byte is 0
//     swapped(w)           words in the other byte order
//     times(w, k)          words times a constant
//     shiftUp(w, by)       words shifted left, by 0 to 15 that only run time knows
//     highBytes(h, l, by)  of words 256 h + l, shifted left by 0 to 7
//     mulHigh(a, b)        the high words of signed products; not for -2^15 times itself
//     pairSums<l, r>(v)    of each pair of bytes: l times the first plus r times the second; l and r are -4 to 4
//     signedPairSums(v), addPairSums(w, v)   of pairs of signed bytes, and w plus these
//     eighths(w), eighths(h)   (w + 4) >> 3 of signed words up to 2^15 - 5; of those of h in a row, as bytes
//     weighPairs(v, fillBytePairs(j, k))   of each pair of bytes: j times the first plus k times the second; j and k are
//                          signed bytes, the sum a signed word
//     clampHalves(a, b)    words as bytes, clamped to 0..255: in each lane those of a, then those of b
//     clampPairs(a, b)     of each pair of bytes: the words clamped to 0..255, the first from a, the second from b
//     lowBytes(h), highBytes(h)   of the words of Halves
//     clamp(q)             signed words of Quarters as bytes in a row, clamped to 0..255
//     quartersPart(i), quartersIndex(i)   where pixel i is: 0 or 1 for a or b, and the index
//     highBytesByTurns(v, w)   of words, the first from v, the second from w
//     inRow(v)             the first halves of all lanes, then the second ones
//     luma<k>(r, g, b)     (k.r R + k.g G + k.b B + k.add) >> 8, of bytes, with positive weights that add up to 256, none
//                          of R and B above 127
//
// The words of N bytes: a Split is two vectors, in an order that is the machine's own
//     widen<shift>(v)      bytes as words, shifted left by 0 to 6
//     sums(a, b), differences(a, b)   a + b, a - b of bytes; of words they are words
//     sums<k>(a, b, c)     a + k b + c, k being -4 to 4
//     lowBytes(s), highBytes(s)   back to bytes
//     clamp<shift>(s)      signed words >> shift, clamped to 0..255; the shift is 0 to 7
//     inOrder(s)           as Halves
//     forPairs(w)          each word for two neighbours
//     pairMeans(s)         of the high bytes of neighbours: (a + b) >> 1
//     splitPart(i), splitIndex(i)   where word i is: 0 or 1 for a or b, and the index
//     products<j, k...>(v, w...)   j v + k w ..., modulo 2^16, of one to three vectors of bytes, with weights from -255
//                          to 255, the first one positive
//     weigh<k>(r, g, b)    k.r R + k.g G + k.b B + k.add, modulo 2^16, of bytes; the weights of R and B are signed bytes
//
// Words weighed in 32 bits
//     wordPairSums(v, k)   of each pair of signed words, the first times that of k plus the second times that of k; for
//                          sums of less than 2^31
// Sums are two vectors of such, in the machine's own order
//     weigh<k>(r, g, b)    words (k.r R + k.g G + k.b B + k.add) >> 8 of unsigned words, with weights that add up to 256
//     weigh(pairUp(a, b), PairFactors(j, k))              j a + k b, of signed words
//     weigh(tripleUp(a, b, c), TripleFactors(i, j, k))    i a + j b + k c
//     clampSums(s, low, high)   each sum
//     wordsOf<from>(s)     of each sum 16 bits from bit `from` on
//     clampedWords<from>(s)   each sum >> from, clamped to 0..65535
#pragma once

#if defined(__SSSE3__) && !defined(KEL_PLAIN)
#include "kernels/machine/x86.h"
#elif defined(__aarch64__) && !defined(KEL_PLAIN)
#include "kernels/machine/neon.h"
#else
namespace kel {
namespace {
constexpr int N = 16, L = 16;
namespace plain {}
namespace machine = plain;
} // namespace
} // namespace kel
#include "kernels/machine/plain.h"
#endif

namespace kel {
namespace {
using namespace machine;
} // namespace
} // namespace kel
