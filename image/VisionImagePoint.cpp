#include "image/VisionImage.h"

#include "image/HistogramTables.h"
#include "image/ImagePart.h"
#include "image/kernels/PointKernels.h"

using namespace ormalux;

void CKestImage::Invert()
{
    const auto pixels = pixelsOf(view());
    kernels::invert(pixels.data(), pixels.size());
}

void CKestImage::Light(long brightness, long contrast)
{
    if (const auto table = buildLightTable(brightness, contrast))
        applyTable(pixelsOf(view()), *table);
}

void CKestImage::Gamma(float gamma)
{
    if (const auto table = buildGammaTable(gamma))
        applyTable(pixelsOf(view()), *table);
}

void CKestImage::HistoEqualize()
{
    if (valid())
        applyTable(pixelsOf(view()), buildEqualizeTable(countLevels(view()), m_length));
}

void CKestImage::HistoLog()
{
    applyTable(pixelsOf(view()), buildLogTable(countLevels(view())));
}

void CKestImage::HistoRoot()
{
    applyTable(pixelsOf(view()), buildRootTable(countLevels(view())));
}

void CKestImage::HistoNormalize()
{
    if (const auto table = buildNormalizeTable(countLevels(view()), m_length))
        applyTable(pixelsOf(view()), *table);
}

void CKestImage::HistoStretch()
{
    if (const auto table = buildStretchTable(countLevels(view())))
        applyTable(pixelsOf(view()), *table);
}

void CKestImage::AutoContrast()
{
    if (const auto table = buildAutoContrastTable(countLevels(view()), m_length))
        applyTable(pixelsOf(view()), *table);
}
