// Convolutions whose entries fit a signed byte, where one instruction multiplies and adds four pixels and
// four entries. Read once for every instruction set, behind RowBlocks-inl.h.

#if defined(ORMALUX_BYTE_CONVOLUTION_INL) == defined(HWY_TARGET_TOGGLE)
#ifdef ORMALUX_BYTE_CONVOLUTION_INL
#undef ORMALUX_BYTE_CONVOLUTION_INL
#else
#define ORMALUX_BYTE_CONVOLUTION_INL
#endif

#if HWY_TARGET == HWY_AVX3_DL

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {

/// The convolution of `count` padded rows by the entries in bytes.
class ByteProducts
{
public:
    using Source = const std::uint8_t* const*;

    explicit ByteProducts(const kernels::WideConvolution& c) : m_c(c), m_groups((c.size + 3) / 4) {}

    HWY_INLINE void run(Source source, std::uint8_t* out, std::ptrdiff_t stride, std::size_t width,
                        int count) const
    {
        const std::ptrdiff_t before = m_c.size / 2;
        eachBlock(out, stride, width, count, [&](std::size_t x, std::uint8_t* to, std::ptrdiff_t step) {
            const std::ptrdiff_t left = std::ptrdiff_t(x) - before;
            int y = 0;
            for (; y + rowsAtATime <= count && rowsAtATime <= m_c.size; y += rowsAtATime)
                filterRows<rowsAtATime>(source + y, left, to + y * step, step);
            for (; y < count; ++y)
                filterRows<1>(source + y, left, to + y * step, step);
        });
    }

private:
    static constexpr int rowsAtATime = 4;

    // Sums or pixels of every fourth column from the first, second, third and fourth one on.
    struct Columns
    {
        __m512i first, second, third, fourth;
    };

    // The sums of Count output rows; only indexed by constants, so that they stay in registers.
    template <int Count>
    struct Sums
    {
        Columns of;
        Sums<Count - 1> rest;
    };

    template <int Count>
    static HWY_INLINE void clear(Sums<Count>& sums)
    {
        const __m512i zero = _mm512_setzero_si512();
        sums.of = {zero, zero, zero, zero};
        if constexpr (Count > 1)
            clear(sums.rest);
    }

    // Highway 1.0 leaves the set's own name of this instruction out of what the compiler may use.
    static HWY_INLINE void addProducts(__m512i pixels, __m512i entries, __m512i& sums)
    {
        asm("vpdpbusd %2, %1, %0" : "+v"(sums) : "v"(pixels), "v"(entries));
    }

    // Adds four entries' products to the sums of the output rows First to Last; the entries of output row j
    // stand j words before `entries`.
    template <int First, int Last, int Count>
    static HWY_INLINE void addGroup(const Columns& pixels, const std::uint32_t* entries, Sums<Count>& sums)
    {
        if constexpr (First <= 0) {
            const __m512i four = _mm512_set1_epi32(int(*entries));
            Columns& of = sums.of;
            addProducts(pixels.first, four, of.first);
            addProducts(pixels.second, four, of.second);
            addProducts(pixels.third, four, of.third);
            addProducts(pixels.fourth, four, of.fourth);
        }
        if constexpr (Last > 0)
            addGroup<First - 1, Last - 1>(pixels, entries - 1, sums.rest);
    }

    // Adds a source row to the sums of the output rows First to Last.
    template <int First, int Last, int Count>
    HWY_INLINE void addRow(const std::uint8_t* p, const std::uint32_t* entries, Sums<Count>& sums) const
    {
        for (int group = 0; group < m_groups; ++group, p += 4, entries += m_c.size) {
            const Columns pixels{_mm512_loadu_si512(p), _mm512_loadu_si512(p + 1), _mm512_loadu_si512(p + 2),
                                 _mm512_loadu_si512(p + 3)};
            addGroup<First, Last>(pixels, entries, sums);
        }
    }

    // The source rows before the last output row's first one, and those after the first output row's last
    // one.
    template <int Done, int Count>
    HWY_INLINE void addEnds(Source source, std::ptrdiff_t x, Sums<Count>& sums) const
    {
        if constexpr (Done + 1 < Count) {
            addRow<0, Done>(source[Done] + x, m_c.bytes + Done, sums);
            const int row = m_c.size + Done;
            addRow<Done + 1, Count - 1>(source[row] + x, m_c.bytes + row, sums);
            addEnds<Done + 1>(source, x, sums);
        }
    }

    template <int Count>
    HWY_INLINE void filterRows(Source source, std::ptrdiff_t x, std::uint8_t* out, std::ptrdiff_t step) const
    {
        Sums<Count> sums;
        clear(sums);
        addEnds<0>(source, x, sums);
        for (int row = Count - 1; row < m_c.size; ++row)
            addRow<0, Count - 1>(source[row] + x, m_c.bytes + row, sums);
        store(sums, out, step);
    }

    HWY_INLINE __m512i quotient(__m512i sum) const
    {
        switch (m_c.quotient) {
        case kernels::Quotient::Negate:
            return _mm512_sub_epi32(_mm512_setzero_si512(), sum);
        case kernels::Quotient::Float:
            return _mm512_cvttps_epi32(
                _mm512_mul_ps(_mm512_cvtepi32_ps(sum), _mm512_set1_ps(float(m_c.reciprocal))));
        case kernels::Quotient::Double: {
            const __m512d factor = _mm512_set1_pd(m_c.reciprocal);
            const auto half = [&](__m256i v) {
                return _mm512_cvttpd_epi32(_mm512_mul_pd(_mm512_cvtepi32_pd(v), factor));
            };
            return _mm512_inserti64x4(_mm512_castsi256_si512(half(_mm512_castsi512_si256(sum))),
                                      half(_mm512_extracti64x4_epi64(sum, 1)), 1);
        }
        default:
            return sum;
        }
    }

    HWY_INLINE __m512i value(__m512i sum) const
    {
        return _mm512_add_epi32(quotient(sum), _mm512_set1_epi32(m_c.offset));
    }

    // Packing keeps values within 0 and 255; it leaves each block of sixteen columns as four by four that
    // change places.
    template <int Count>
    HWY_INLINE void store(const Sums<Count>& sums, std::uint8_t* out, std::ptrdiff_t stride) const
    {
        const __m512i places = _mm512_set_epi32(0x0f0b0703, 0x0e0a0602, 0x0d090501, 0x0c080400, //
                                                0x0f0b0703, 0x0e0a0602, 0x0d090501, 0x0c080400, //
                                                0x0f0b0703, 0x0e0a0602, 0x0d090501, 0x0c080400, //
                                                0x0f0b0703, 0x0e0a0602, 0x0d090501, 0x0c080400);
        const __m512i front = _mm512_packs_epi32(value(sums.of.first), value(sums.of.second));
        const __m512i back = _mm512_packs_epi32(value(sums.of.third), value(sums.of.fourth));
        _mm512_storeu_si512(out, _mm512_shuffle_epi8(_mm512_packus_epi16(front, back), places));
        if constexpr (Count > 1)
            store(sums.rest, out + stride, stride);
    }

    const kernels::WideConvolution& m_c;
    int m_groups;
};

template <>
struct ByteProducts::Sums<0>
{
};

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
#endif
