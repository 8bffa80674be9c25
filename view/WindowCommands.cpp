#include "view/WindowCommands.h"

#include <QCoreApplication>
#include <QString>

#include <algorithm>

namespace ormalux {

namespace {

using enum CommandKind;

constexpr ToolbarCommand buttons[] = {
    {5500, View, "open", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "BMP 파일 열기"), "Ctrl+O", false},
    {5501, Picture, "save", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "BMP 파일로 저장 하기"), "Ctrl+S", false},
    {5505, View, "one-to-one", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "1:1 보기"), "Ctrl+1", true},
    {5502, View, "fit", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "화면에 꽉 차게 보기"), "Ctrl+0", false},
    {5503, View, "zoom-in", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "확대"), "Ctrl++", false},
    {5504, View, "zoom-out", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "축소"), "Ctrl+-", false},
    {6600, View, "region", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "ROI 영역 설정 하기"), "Ctrl+R", true},
    {6605, Picture, "rotate-left", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "왼쪽으로 90도 돌리기"), nullptr,
     true},
    {6606, Picture, "rotate-right", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "오른쪽으로 90도 돌리기"), nullptr,
     false},
    {6607, Picture, "flip-horizontal", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "좌우 바꾸기"), nullptr, false},
    {6608, Picture, "flip-vertical", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "상하 바꾸기"), nullptr, false},
    {6609, Picture, "rotate-180", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "180도 돌리기"), nullptr, false},
    {6610, Tool, "rotate-free", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "임의로 돌리기"), nullptr, false},
    {6500, Menu, nullptr, "E",
     QT_TRANSLATE_NOOP("CKestWnd", "Gamma, Light, Erode, Dilate, Open Box, Close Box"), nullptr, true},
    {6501, Menu, nullptr, "H.E",
     QT_TRANSLATE_NOOP("CKestWnd", "Histogram Equalize, Normalize, Root, Log, Stretch"), nullptr, false},
    {6502, Menu, nullptr, "F",
     QT_TRANSLATE_NOOP(
         "CKestWnd",
         "Blur, Soften, Gaussian 5X5, Gaussian 3X3, Sharpen, Emboss, Edge, Laplacian, User Filter"),
     nullptr, false},
    {6601, Tool, "blob", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "BLOB Object 추출 하기"), nullptr, true},
    {6602, Tool, "histogram", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "히스토그램 보기"), nullptr, false},
    {6603, Tool, "threshold", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "Threshold"), nullptr, false},
    {6604, Tool, "double-threshold", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "Double Threshold"), nullptr,
     false},
    {6709, Tool, "point-gauge", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "Point 게이지"), nullptr, true},
    {6710, Tool, "line-gauge", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "Line 게이지"), nullptr, false},
    {6711, Tool, "character", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "OCR"), nullptr, true},
    {6712, Tool, "match", nullptr, QT_TRANSLATE_NOOP("CKestWnd", "Match"), nullptr, false},
};

constexpr MenuCommand separator = {0, View, nullptr};

constexpr MenuCommand effects[] = {
    {6701, Tool, QT_TRANSLATE_NOOP("CKestWnd", "Gamma(&G) ...")},
    {6702, Tool, QT_TRANSLATE_NOOP("CKestWnd", "Light(&L) ...")},
    separator,
    {6617, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Erode(&R)")},
    {6618, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Dilate(&D)")},
    {6619, Picture, QT_TRANSLATE_NOOP("CKestWnd", "OpenBox(&O)")},
    {6620, Picture, QT_TRANSLATE_NOOP("CKestWnd", "CloseBox(&C)")},
};

constexpr MenuCommand histogramEffects[] = {
    {6703, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Histogram Equalize(&E)")},
    {6704, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Histogram Normalize(&N)")},
    {6705, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Histogram Root(&R)")},
    {6706, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Histogram Log(&L)")},
    {6707, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Histogram Stretch(&S)")},
};

constexpr MenuCommand filters[] = {
    {6626, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Blur(&B)")},
    {6627, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Soften(&S)")},
    {6628, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Gaussian 5X5(&5)")},
    {6629, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Gaussian 3X3(&3)")},
    separator,
    {6625, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Sharpen(&P)")},
    separator,
    {6630, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Emboss(&E)")},
    {6631, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Edge(&G)")},
    {6632, Picture, QT_TRANSLATE_NOOP("CKestWnd", "Laplacian(&L)")},
    separator,
    {6633, Tool, QT_TRANSLATE_NOOP("CKestWnd", "Filter(&F) ...")},
};

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
