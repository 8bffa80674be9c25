#include "view/WindowCommands.h"

#include <QCoreApplication>
#include <QString>

#include <algorithm>

namespace ormalux {

namespace {

using enum CommandKind;

#define TEXT(text) QT_TRANSLATE_NOOP("CKestWnd", text)

constexpr ToolbarCommand buttons[] = {
    {5500, View, "open", nullptr, TEXT("BMP 파일 열기"), "Ctrl+O", false},
    {5501, Picture, "save", nullptr, TEXT("BMP 파일로 저장 하기"), "Ctrl+S", false},
    {5505, View, "one-to-one", nullptr, TEXT("1:1 보기"), "Ctrl+1", true},
    {5502, View, "fit", nullptr, TEXT("화면에 꽉 차게 보기"), "Ctrl+0", false},
    {5503, View, "zoom-in", nullptr, TEXT("확대"), "Ctrl++", false},
    {5504, View, "zoom-out", nullptr, TEXT("축소"), "Ctrl+-", false},
    {6600, View, "region", nullptr, TEXT("ROI 영역 설정 하기"), "Ctrl+R", true},
    {6605, Picture, "rotate-left", nullptr, TEXT("왼쪽으로 90도 돌리기"), nullptr, true},
    {6606, Picture, "rotate-right", nullptr, TEXT("오른쪽으로 90도 돌리기"), nullptr, false},
    {6607, Picture, "flip-horizontal", nullptr, TEXT("좌우 바꾸기"), nullptr, false},
    {6608, Picture, "flip-vertical", nullptr, TEXT("상하 바꾸기"), nullptr, false},
    {6609, Picture, "rotate-180", nullptr, TEXT("180도 돌리기"), nullptr, false},
    {6610, Tool, "rotate-free", nullptr, TEXT("임의로 돌리기"), nullptr, false},
    {6500, Menu, nullptr, "E", TEXT("Gamma, Light, Erode, Dilate, Open Box, Close Box"), nullptr, true},
    {6501, Menu, nullptr, "H.E", TEXT("Histogram Equalize, Normalize, Root, Log, Stretch"), nullptr, false},
    {6502, Menu, nullptr, "F",
     TEXT("Blur, Soften, Gaussian 5X5, Gaussian 3X3, Sharpen, Emboss, Edge, Laplacian, User Filter"), nullptr,
     false},
    {6601, Tool, "blob", nullptr, TEXT("BLOB Object 추출 하기"), nullptr, true},
    {6602, Tool, "histogram", nullptr, TEXT("히스토그램 보기"), nullptr, false},
    {6603, Tool, "threshold", nullptr, TEXT("Threshold"), nullptr, false},
    {6604, Tool, "double-threshold", nullptr, TEXT("Double Threshold"), nullptr, false},
    {6709, Tool, "point-gauge", nullptr, TEXT("Point 게이지"), nullptr, true},
    {6710, Tool, "line-gauge", nullptr, TEXT("Line 게이지"), nullptr, false},
    {6711, Tool, "character", nullptr, TEXT("OCR"), nullptr, true},
    {6712, Tool, "match", nullptr, TEXT("Match"), nullptr, false},
};

constexpr MenuCommand separator = {0, View, nullptr};

constexpr MenuCommand effects[] = {
    {6701, Tool, TEXT("Gamma(&G) ...")},
    {6702, Tool, TEXT("Light(&L) ...")},
    separator,
    {6617, Picture, TEXT("Erode(&R)")},
    {6618, Picture, TEXT("Dilate(&D)")},
    {6619, Picture, TEXT("OpenBox(&O)")},
    {6620, Picture, TEXT("CloseBox(&C)")},
};

constexpr MenuCommand histogramEffects[] = {
    {6703, Picture, TEXT("Histogram Equalize(&E)")}, {6704, Picture, TEXT("Histogram Normalize(&N)")},
    {6705, Picture, TEXT("Histogram Root(&R)")},     {6706, Picture, TEXT("Histogram Log(&L)")},
    {6707, Picture, TEXT("Histogram Stretch(&S)")},
};

constexpr MenuCommand filters[] = {
    {6626, Picture, TEXT("Blur(&B)")},
    {6627, Picture, TEXT("Soften(&S)")},
    {6628, Picture, TEXT("Gaussian 5X5(&5)")},
    {6629, Picture, TEXT("Gaussian 3X3(&3)")},
    separator,
    {6625, Picture, TEXT("Sharpen(&P)")},
    separator,
    {6630, Picture, TEXT("Emboss(&E)")},
    {6631, Picture, TEXT("Edge(&G)")},
    {6632, Picture, TEXT("Laplacian(&L)")},
    separator,
    {6633, Tool, TEXT("Filter(&F) ...")},
};

#undef TEXT

} // namespace

std::span<const ToolbarCommand> toolbarCommands()
{
    return buttons;
}

std::span<const MenuCommand> menuCommands(int command)
{
    switch (command) {
    case 6500:
        return effects;
    case 6501:
        return histogramEffects;
    case 6502:
        return filters;
    default:
        return {};
    }
}

CommandKind kindOf(int command)
{
    for (const ToolbarCommand& button : buttons) {
        if (button.command == command)
            return button.kind;
        for (const MenuCommand& item : menuCommands(button.command))
            if (item.command == command)
                return item.kind;
    }
    return View;
}

QString windowText(const char* text)
{
    return QCoreApplication::translate("CKestWnd", text);
}

} // namespace ormalux
