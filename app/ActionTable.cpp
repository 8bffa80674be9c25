#include "app/ActionTable.h"

#include "app/MainWindow.h"

namespace ormalux::viewer {

std::span<const MenuRow> Menus::rows()
{
    static constexpr MenuRow rows[] = {
        {"file", nullptr, QT_TR_NOOP("파일(&F)")},
        {"view", nullptr, QT_TR_NOOP("보기(&V)")},
        {"region", nullptr, QT_TR_NOOP("영역(&R)")},
        {"process", nullptr, QT_TR_NOOP("처리(&P)")},
        {"tool", nullptr, QT_TR_NOOP("도구(&T)")},
        {"help", nullptr, QT_TR_NOOP("도움말(&H)")},
        {"recent", "file", QT_TR_NOOP("최근 파일(&R)")},
        {"language", "view", QT_TR_NOOP("언어 (&Language)")},
        {"theme", "view", QT_TR_NOOP("테마(&M)")},
        {"turn", "process", QT_TR_NOOP("돌리기와 뒤집기(&T)")},
        {"effect", "process", QT_TR_NOOP("효과(&E)")},
        {"histoEffect", "process", QT_TR_NOOP("히스토그램 효과(&H)")},
        {"filter", "process", QT_TR_NOOP("필터(&F)")},
    };
    return rows;
}

std::span<const char* const [2]> Menus::themes() {
    static constexpr const char* rows[][2] = {{"system", QT_TR_NOOP("시스템 설정 따름(&S)")},
                                              {"light", QT_TR_NOOP("밝게(&L)")},
                                              {"dark", QT_TR_NOOP("어둡게(&D)")}};
    return rows;
}

std::span<const ActionRow> Menus::actions()
{
    using Window = MainWindow;
    constexpr auto none = Needs::Nothing;
    constexpr auto picture = Needs::Picture;
    static constexpr ActionRow rows[] = {
        {"file", "open", QT_TR_NOOP("열기(&O)..."), "Ctrl+O", none, 0, &Window::open},
        {"file", "recent", nullptr, "", none, 0, nullptr},
        {"file", "openResults", QT_TR_NOOP("결과 파일 열기(&J)..."), "Ctrl+J", picture, 0,
         &Window::openResults},
        {"file", "reload", QT_TR_NOOP("다시 읽기(&L)"), "F5", Needs::File, 0, &Window::reload},
        {"file", nullptr, nullptr, "", none, 0, nullptr},
        {"file", "save", QT_TR_NOOP("그림 저장(&S)..."), "Ctrl+S", picture, 0, &Window::save},
        {"file", "saveWithOverlays", QT_TR_NOOP("오버레이와 함께 저장(&A)..."), "Ctrl+Shift+S", picture, 0,
         &Window::saveWithOverlays},
        {"file", "saveAsSeen", QT_TR_NOOP("보이는 대로 저장(&V)..."), "Ctrl+Alt+S", picture, 0,
         &Window::saveAsSeen},
        {"file", nullptr, nullptr, "", none, 0, nullptr},
        {"file", "copyPicture", QT_TR_NOOP("그림 복사(&C)"), "Ctrl+C", picture, 0, &Window::copyPicture},
        {"file", "copyAsSeen", QT_TR_NOOP("보이는 대로 복사(&T)"), "Ctrl+Shift+C", picture, 0,
         &Window::copyAsSeen},
        {"file", nullptr, nullptr, "", none, 0, nullptr},
        {"file", "previous", QT_TR_NOOP("이전 그림(&P)"), "PgUp;Ctrl+Left", Needs::Pages, 0,
         &Window::previous},
        {"file", "next", QT_TR_NOOP("다음 그림(&N)"), "PgDown;Ctrl+Right", Needs::Pages, 0, &Window::next},
        {"file", nullptr, nullptr, "", none, 0, nullptr},
        {"file", "quit", QT_TR_NOOP("끝내기(&X)"), "Ctrl+Q", none, 0, nullptr},

        {"view", "zoomIn", QT_TR_NOOP("확대(&I)"), "Ctrl++;Ctrl+=", picture, 5503, nullptr},
        {"view", "zoomOut", QT_TR_NOOP("축소(&O)"), "Ctrl+-", picture, 5504, nullptr},
        {"view", "zoom100", QT_TR_NOOP("1:1 보기(&1)"), "Ctrl+1", picture, 5505, nullptr},
        {"view", "zoomFit", QT_TR_NOOP("화면에 꽉 차게 보기(&F)"), "Ctrl+0", picture, 5502, nullptr},
        {"view", nullptr, nullptr, "", none, 0, nullptr},
        {"view", "overlays", QT_TR_NOOP("오버레이 보기(&V)"), "Ctrl+L", none, 3302, nullptr, true},
        {"view", "clearOverlays", QT_TR_NOOP("오버레이 지우기(&C)"), "Ctrl+Shift+L", none, 0,
         &Window::clearOverlays},
        {"view", nullptr, nullptr, "", none, 0, nullptr},
        {"view", "toolBar", QT_TR_NOOP("도구 모음(&T)"), "F9", none, 0, &Window::toggleToolBar, true},
        {"view", "statusBar", QT_TR_NOOP("상태 표시줄(&S)"), "", none, 0, &Window::toggleStatusBar, true},
        {"view", nullptr, nullptr, "", none, 0, nullptr},
        {"view", "language", nullptr, "", none, 0, nullptr},
        {"view", "theme", nullptr, "", none, 0, nullptr},

        {"region", "region", QT_TR_NOOP("ROI 설정(&S)"), "Ctrl+R", picture, 6600, nullptr},
        {"region", "enterRegion", QT_TR_NOOP("ROI 좌표 입력(&N)..."), "Ctrl+Shift+R", picture, 0,
         &Window::enterRegion},
        {"region", "confirmRegion", QT_TR_NOOP("ROI 확정(&C)"), "Ctrl+Return", Needs::Region, 3300, nullptr},
        {"region", "cancelRegion", QT_TR_NOOP("ROI 취소(&X)"), "Ctrl+D", Needs::Region, 3301, nullptr},
        {"region", nullptr, nullptr, "", none, 0, nullptr},
        {"region", "copyRegion", QT_TR_NOOP("ROI 좌표 복사(&P)"), "", Needs::Region, 0, &Window::copyRegion},
        {"region", "saveOcrSource", QT_TR_NOOP("OCR 소스로 저장(&O)..."), "", Needs::Region, 3303, nullptr},
        {"region", "saveMatchSource", QT_TR_NOOP("Match 소스로 저장(&M)..."), "", Needs::Region, 3304,
         nullptr},

        {"process", "turn", nullptr, "", none, 0, nullptr},
        {"turn", "rotateLeft", QT_TR_NOOP("왼쪽으로 90도 돌리기(&L)"), "Ctrl+[", picture, 6605, nullptr},
        {"turn", "rotateRight", QT_TR_NOOP("오른쪽으로 90도 돌리기(&R)"), "Ctrl+]", picture, 6606, nullptr},
        {"turn", "rotate180", QT_TR_NOOP("180도 돌리기(&1)"), "", picture, 6609, nullptr},
        {"turn", "rotate", QT_TR_NOOP("임의로 돌리기(&F)..."), "", picture, 6610, nullptr},
        {"turn", nullptr, nullptr, "", none, 0, nullptr},
        {"turn", "flipHorizontal", QT_TR_NOOP("좌우 바꾸기(&H)"), "", picture, 6607, nullptr},
        {"turn", "flipVertical", QT_TR_NOOP("상하 바꾸기(&V)"), "", picture, 6608, nullptr},
        {"process", "effect", nullptr, "", none, 0, nullptr},
        {"effect", "gamma", QT_TR_NOOP("Gamma(&G) ..."), "", picture, 6701, nullptr},
        {"effect", "light", QT_TR_NOOP("Light(&L) ..."), "", picture, 6702, nullptr},
        {"effect", nullptr, nullptr, "", none, 0, nullptr},
        {"effect", "erode", QT_TR_NOOP("Erode(&R)"), "", picture, 6617, nullptr},
        {"effect", "dilate", QT_TR_NOOP("Dilate(&D)"), "", picture, 6618, nullptr},
        {"effect", "openBox", QT_TR_NOOP("OpenBox(&O)"), "", picture, 6619, nullptr},
        {"effect", "closeBox", QT_TR_NOOP("CloseBox(&C)"), "", picture, 6620, nullptr},
        {"process", "histoEffect", nullptr, "", none, 0, nullptr},
        {"histoEffect", "histoEqualize", QT_TR_NOOP("Histogram Equalize(&E)"), "", picture, 6703, nullptr},
        {"histoEffect", "histoNormalize", QT_TR_NOOP("Histogram Normalize(&N)"), "", picture, 6704, nullptr},
        {"histoEffect", "histoRoot", QT_TR_NOOP("Histogram Root(&R)"), "", picture, 6705, nullptr},
        {"histoEffect", "histoLog", QT_TR_NOOP("Histogram Log(&L)"), "", picture, 6706, nullptr},
        {"histoEffect", "histoStretch", QT_TR_NOOP("Histogram Stretch(&S)"), "", picture, 6707, nullptr},
        {"process", "filter", nullptr, "", none, 0, nullptr},
        {"filter", "blur", QT_TR_NOOP("Blur(&B)"), "", picture, 6626, nullptr},
        {"filter", "soften", QT_TR_NOOP("Soften(&S)"), "", picture, 6627, nullptr},
        {"filter", "gaussian5", QT_TR_NOOP("Gaussian 5X5(&5)"), "", picture, 6628, nullptr},
        {"filter", "gaussian3", QT_TR_NOOP("Gaussian 3X3(&3)"), "", picture, 6629, nullptr},
        {"filter", nullptr, nullptr, "", none, 0, nullptr},
        {"filter", "sharpen", QT_TR_NOOP("Sharpen(&P)"), "", picture, 6625, nullptr},
        {"filter", nullptr, nullptr, "", none, 0, nullptr},
        {"filter", "emboss", QT_TR_NOOP("Emboss(&E)"), "", picture, 6630, nullptr},
        {"filter", "edge", QT_TR_NOOP("Edge(&G)"), "", picture, 6631, nullptr},
        {"filter", "laplacian", QT_TR_NOOP("Laplacian(&L)"), "", picture, 6632, nullptr},
        {"filter", nullptr, nullptr, "", none, 0, nullptr},
        {"filter", "userFilter", QT_TR_NOOP("Filter(&F) ..."), "", picture, 6633, nullptr},

        {"tool", "histogram", QT_TR_NOOP("히스토그램 보기(&H)..."), "Ctrl+H", picture, 6602, nullptr},
        {"tool", "threshold", QT_TR_NOOP("Threshold(&T)..."), "Ctrl+T", picture, 6603, nullptr},
        {"tool", "doubleThreshold", QT_TR_NOOP("Double Threshold(&D)..."), "Ctrl+Shift+T", picture, 6604,
         nullptr},
        {"tool", nullptr, nullptr, "", none, 0, nullptr},
        {"tool", "blob", QT_TR_NOOP("BLOB Object 추출 하기(&B)..."), "Ctrl+B", picture, 6601, nullptr},
        {"tool", "pointGauge", QT_TR_NOOP("Point 게이지(&P)..."), "Ctrl+P", picture, 6709, nullptr},
        {"tool", "lineGauge", QT_TR_NOOP("Line 게이지(&L)..."), "Ctrl+Shift+P", picture, 6710, nullptr},
        {"tool", nullptr, nullptr, "", none, 0, nullptr},
        {"tool", "ocr", QT_TR_NOOP("OCR(&O)..."), "Ctrl+Shift+M", picture, 6711, nullptr},
        {"tool", "match", QT_TR_NOOP("Match(&M)..."), "Ctrl+M", picture, 6712, nullptr},

        {"help", "about", QT_TR_NOOP("Ormalux 정보(&A)"), "F1", none, 0, &Window::about},
    };
    return rows;
}

} // namespace ormalux::viewer
