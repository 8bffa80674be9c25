<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="ko">
<context>
    <name>Menus</name>
    <message>
        <source>파일(&amp;F)</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>보기(&amp;V)</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>영역(&amp;R)</source>
        <translation>&amp;Region</translation>
    </message>
    <message>
        <source>처리(&amp;P)</source>
        <translation>&amp;Process</translation>
    </message>
    <message>
        <source>도구(&amp;T)</source>
        <translation>&amp;Tools</translation>
    </message>
    <message>
        <source>도움말(&amp;H)</source>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>최근 파일(&amp;R)</source>
        <translation>&amp;Recent Files</translation>
    </message>
    <message>
        <source>언어 (&amp;Language)</source>
        <translation>&amp;Language (언어)</translation>
    </message>
    <message>
        <source>테마(&amp;M)</source>
        <translation>The&amp;me</translation>
    </message>
    <message>
        <source>돌리기와 뒤집기(&amp;T)</source>
        <translation>&amp;Turn and Flip</translation>
    </message>
    <message>
        <source>효과(&amp;E)</source>
        <translation>&amp;Effects</translation>
    </message>
    <message>
        <source>히스토그램 효과(&amp;H)</source>
        <translation>&amp;Histogram Effects</translation>
    </message>
    <message>
        <source>필터(&amp;F)</source>
        <translation>&amp;Filters</translation>
    </message>
    <message>
        <source>시스템 설정 따름(&amp;S)</source>
        <translation>As the &amp;System</translation>
    </message>
    <message>
        <source>밝게(&amp;L)</source>
        <translation>&amp;Light</translation>
    </message>
    <message>
        <source>어둡게(&amp;D)</source>
        <translation>&amp;Dark</translation>
    </message>
    <message>
        <source>열기(&amp;O)...</source>
        <translation>&amp;Open...</translation>
    </message>
    <message>
        <source>결과 파일 열기(&amp;J)...</source>
        <translation>Open Results (&amp;JSON)...</translation>
    </message>
    <message>
        <source>다시 읽기(&amp;L)</source>
        <translation>Re&amp;load</translation>
    </message>
    <message>
        <source>그림 저장(&amp;S)...</source>
        <translation>&amp;Save Picture...</translation>
    </message>
    <message>
        <source>오버레이와 함께 저장(&amp;A)...</source>
        <translation>S&amp;ave with Overlays...</translation>
    </message>
    <message>
        <source>보이는 대로 저장(&amp;V)...</source>
        <translation>Sa&amp;ve as Seen...</translation>
    </message>
    <message>
        <source>그림 복사(&amp;C)</source>
        <translation>&amp;Copy Picture</translation>
    </message>
    <message>
        <source>보이는 대로 복사(&amp;T)</source>
        <translation>Copy as See&amp;n</translation>
    </message>
    <message>
        <source>이전 그림(&amp;P)</source>
        <translation>&amp;Previous Picture</translation>
    </message>
    <message>
        <source>다음 그림(&amp;N)</source>
        <translation>N&amp;ext Picture</translation>
    </message>
    <message>
        <source>끝내기(&amp;X)</source>
        <translation>E&amp;xit</translation>
    </message>
    <message>
        <source>확대(&amp;I)</source>
        <translation>Zoom &amp;In</translation>
    </message>
    <message>
        <source>축소(&amp;O)</source>
        <translation>Zoom &amp;Out</translation>
    </message>
    <message>
        <source>1:1 보기(&amp;1)</source>
        <translation>&amp;1:1</translation>
    </message>
    <message>
        <source>화면에 꽉 차게 보기(&amp;F)</source>
        <translation>&amp;Fit to Window</translation>
    </message>
    <message>
        <source>오버레이 보기(&amp;V)</source>
        <translation>O&amp;verlays</translation>
    </message>
    <message>
        <source>오버레이 지우기(&amp;C)</source>
        <translation>&amp;Clear Overlays</translation>
    </message>
    <message>
        <source>도구 모음(&amp;T)</source>
        <translation>&amp;Toolbar</translation>
    </message>
    <message>
        <source>상태 표시줄(&amp;S)</source>
        <translation>&amp;Status Bar</translation>
    </message>
    <message>
        <source>ROI 설정(&amp;S)</source>
        <translation>&amp;Set ROI</translation>
    </message>
    <message>
        <source>ROI 좌표 입력(&amp;N)...</source>
        <translation>E&amp;nter ROI Coordinates...</translation>
    </message>
    <message>
        <source>ROI 확정(&amp;C)</source>
        <translation>&amp;Confirm ROI</translation>
    </message>
    <message>
        <source>ROI 취소(&amp;X)</source>
        <translation>Cancel ROI (&amp;X)</translation>
    </message>
    <message>
        <source>ROI 좌표 복사(&amp;P)</source>
        <translation>Co&amp;py ROI Coordinates</translation>
    </message>
    <message>
        <source>OCR 소스로 저장(&amp;O)...</source>
        <translation>Save as &amp;OCR Source...</translation>
    </message>
    <message>
        <source>Match 소스로 저장(&amp;M)...</source>
        <translation>Save as &amp;Match Source...</translation>
    </message>
    <message>
        <source>왼쪽으로 90도 돌리기(&amp;L)</source>
        <translation>Turn 90° &amp;Left</translation>
    </message>
    <message>
        <source>오른쪽으로 90도 돌리기(&amp;R)</source>
        <translation>Turn 90° &amp;Right</translation>
    </message>
    <message>
        <source>180도 돌리기(&amp;1)</source>
        <translation>Turn &amp;180°</translation>
    </message>
    <message>
        <source>임의로 돌리기(&amp;F)...</source>
        <translation>Turn &amp;Freely...</translation>
    </message>
    <message>
        <source>좌우 바꾸기(&amp;H)</source>
        <translation>Flip &amp;Horizontally</translation>
    </message>
    <message>
        <source>상하 바꾸기(&amp;V)</source>
        <translation>Flip &amp;Vertically</translation>
    </message>
    <message>
        <source>Gamma(&amp;G) ...</source>
        <translation>&amp;Gamma...</translation>
    </message>
    <message>
        <source>Light(&amp;L) ...</source>
        <translation>&amp;Light...</translation>
    </message>
    <message>
        <source>Erode(&amp;R)</source>
        <translation>E&amp;rode</translation>
    </message>
    <message>
        <source>Dilate(&amp;D)</source>
        <translation>&amp;Dilate</translation>
    </message>
    <message>
        <source>OpenBox(&amp;O)</source>
        <translation>&amp;Open Box</translation>
    </message>
    <message>
        <source>CloseBox(&amp;C)</source>
        <translation>&amp;Close Box</translation>
    </message>
    <message>
        <source>Histogram Equalize(&amp;E)</source>
        <translation>Histogram &amp;Equalize</translation>
    </message>
    <message>
        <source>Histogram Normalize(&amp;N)</source>
        <translation>Histogram &amp;Normalize</translation>
    </message>
    <message>
        <source>Histogram Root(&amp;R)</source>
        <translation>Histogram &amp;Root</translation>
    </message>
    <message>
        <source>Histogram Log(&amp;L)</source>
        <translation>Histogram &amp;Log</translation>
    </message>
    <message>
        <source>Histogram Stretch(&amp;S)</source>
        <translation>Histogram &amp;Stretch</translation>
    </message>
    <message>
        <source>Blur(&amp;B)</source>
        <translation>&amp;Blur</translation>
    </message>
    <message>
        <source>Soften(&amp;S)</source>
        <translation>&amp;Soften</translation>
    </message>
    <message>
        <source>Gaussian 5X5(&amp;5)</source>
        <translation>Gaussian &amp;5x5</translation>
    </message>
    <message>
        <source>Gaussian 3X3(&amp;3)</source>
        <translation>Gaussian &amp;3x3</translation>
    </message>
    <message>
        <source>Sharpen(&amp;P)</source>
        <translation>Shar&amp;pen</translation>
    </message>
    <message>
        <source>Emboss(&amp;E)</source>
        <translation>&amp;Emboss</translation>
    </message>
    <message>
        <source>Edge(&amp;G)</source>
        <translation>Ed&amp;ge</translation>
    </message>
    <message>
        <source>Laplacian(&amp;L)</source>
        <translation>&amp;Laplacian</translation>
    </message>
    <message>
        <source>Filter(&amp;F) ...</source>
        <translation>User &amp;Filter...</translation>
    </message>
    <message>
        <source>히스토그램 보기(&amp;H)...</source>
        <translation>&amp;Histogram...</translation>
    </message>
    <message>
        <source>Threshold(&amp;T)...</source>
        <translation>&amp;Threshold...</translation>
    </message>
    <message>
        <source>Double Threshold(&amp;D)...</source>
        <translation>&amp;Double Threshold...</translation>
    </message>
    <message>
        <source>BLOB Object 추출 하기(&amp;B)...</source>
        <translation>Find &amp;Blobs...</translation>
    </message>
    <message>
        <source>Point 게이지(&amp;P)...</source>
        <translation>&amp;Point Gauge...</translation>
    </message>
    <message>
        <source>Line 게이지(&amp;L)...</source>
        <translation>&amp;Line Gauge...</translation>
    </message>
    <message>
        <source>OCR(&amp;O)...</source>
        <translation>&amp;OCR...</translation>
    </message>
    <message>
        <source>Match(&amp;M)...</source>
        <translation>&amp;Match...</translation>
    </message>
    <message>
        <source>Ormalux 정보(&amp;A)</source>
        <translation>&amp;About Ormalux</translation>
    </message>
</context>
<context>
    <name>PictureFile</name>
    <message>
        <source>파일을 찾을 수 없습니다.</source>
        <translation>The file was not found.</translation>
    </message>
    <message>
        <source>파일을 읽을 권한이 없습니다.</source>
        <translation>You are not allowed to read the file.</translation>
    </message>
    <message>
        <source>읽을 수 있는 그림 파일이 아닙니다.</source>
        <translation>This is not a picture file that can be read.</translation>
    </message>
    <message>
        <source>저장할 수 없는 파일 형식입니다. bmp, png, jpg, tif 중에서 고르십시오.</source>
        <translation>This kind of file cannot be saved. Choose from bmp, png, jpg, tif.</translation>
    </message>
    <message>
        <source>폴더에 그림 파일이 없습니다.</source>
        <translation>There are no picture files in the folder.</translation>
    </message>
    <message>
        <source>저장할 폴더가 없습니다.</source>
        <translation>The folder to save in does not exist.</translation>
    </message>
    <message>
        <source>같은 이름의 폴더가 있습니다.</source>
        <translation>There is a folder of this name.</translation>
    </message>
    <message>
        <source>파일을 쓸 권한이 없습니다.</source>
        <translation>You are not allowed to write the file.</translation>
    </message>
    <message>
        <source>파일을 저장할 수 없습니다. 남은 공간을 확인하십시오.</source>
        <translation>The file could not be saved. Check the space that is left.</translation>
    </message>
    <message>
        <source>저장할 그림이 없거나 메모리가 부족합니다.</source>
        <translation>There is no picture to save, or too little memory.</translation>
    </message>
    <message>
        <source>파일이 아니라 장치나 파이프입니다.</source>
        <translation>It is a device or a pipe, not a file.</translation>
    </message>
    <message>
        <source>파일이 중간에 끊겨 있습니다.</source>
        <translation>The file is cut short.</translation>
    </message>
    <message>
        <source>그림 파일이 손상되었습니다.</source>
        <translation>The picture file is damaged.</translation>
    </message>
    <message>
        <source>지원하지 않는 화소 형식입니다 (실수, 부호 있는 수 등).</source>
        <translation>Its kind of samples is not supported (floating-point or signed numbers, odd depths).</translation>
    </message>
    <message>
        <source>그림이 너무 큽니다 (최대 5억 1200만 화소).</source>
        <translation>The picture is too large (at most 512 million pixels).</translation>
    </message>
    <message>
        <source>메모리가 부족합니다.</source>
        <translation>Memory is short.</translation>
    </message>
</context>
<context>
    <name>RegionDlg</name>
    <message>
        <source>ROI 좌표 입력</source>
        <translation>Enter ROI Coordinates</translation>
    </message>
    <message>
        <source>왼쪽(&amp;L)</source>
        <translation>&amp;Left</translation>
    </message>
    <message>
        <source>위(&amp;T)</source>
        <translation>&amp;Top</translation>
    </message>
    <message>
        <source>오른쪽(&amp;R)</source>
        <translation>&amp;Right</translation>
    </message>
    <message>
        <source>아래(&amp;B)</source>
        <translation>&amp;Bottom</translation>
    </message>
    <message>
        <source>너비(&amp;W)</source>
        <translation>&amp;Width</translation>
    </message>
    <message>
        <source>높이(&amp;H)</source>
        <translation>&amp;Height</translation>
    </message>
    <message>
        <source>네 변의 화소는 모두 영역에 들어갑니다.</source>
        <translation>The pixels of all four edges belong to the region.</translation>
    </message>
</context>
<context>
    <name>Results</name>
    <message>
        <source>파일을 찾을 수 없습니다.</source>
        <translation>The file was not found.</translation>
    </message>
    <message>
        <source>파일을 읽을 수 없습니다.</source>
        <translation>The file cannot be read.</translation>
    </message>
    <message>
        <source>결과 파일이 너무 큽니다.</source>
        <translation>The file of results is too large.</translation>
    </message>
    <message>
        <source>결과 파일(JSON)이 아닙니다.</source>
        <translation>This is not a file of results (JSON).</translation>
    </message>
    <message>
        <source>파일이 아니라 장치나 파이프입니다.</source>
        <translation>It is a device or a pipe, not a file.</translation>
    </message>
</context>
<context>
    <name>ormalux::viewer::AboutBox</name>
    <message>
        <source>Ormalux 정보</source>
        <translation>About Ormalux</translation>
    </message>
    <message>
        <source>명령어 집합</source>
        <translation>Instruction set</translation>
    </message>
    <message>
        <source>프로세서</source>
        <translation>Processors</translation>
    </message>
    <message>
        <source>산업용 검사 머신 비전</source>
        <translation>Machine vision for industrial inspection</translation>
    </message>
</context>
<context>
    <name>ormalux::viewer::MainWindow</name>
    <message>
        <source>ROI를 확정했습니다: %1, %2 - %3, %4</source>
        <translation>Region confirmed: %1, %2 - %3, %4</translation>
    </message>
    <message>
        <source>결과 %1개를 그렸습니다.</source>
        <translation>%1 results drawn.</translation>
    </message>
    <message>
        <source>ROI가 그림 밖으로 나갑니다: %1, %2 - %3, %4</source>
        <translation>The region leaves the picture: %1, %2 - %3, %4</translation>
    </message>
    <message>
        <source>그림 파일 열기</source>
        <translation>Open Pictures</translation>
    </message>
    <message>
        <source>그림 파일</source>
        <translation>Pictures</translation>
    </message>
    <message>
        <source>모든 파일</source>
        <translation>All files</translation>
    </message>
    <message>
        <source>결과 파일 열기</source>
        <translation>Open Results</translation>
    </message>
    <message>
        <source>결과 파일</source>
        <translation>Results</translation>
    </message>
    <message>
        <source>그림</source>
        <translation>picture</translation>
    </message>
    <message>
        <source>그림 파일 저장</source>
        <translation>Save Picture</translation>
    </message>
    <message>
        <source>오버레이와 함께 저장</source>
        <translation>Save with Overlays</translation>
    </message>
    <message>
        <source>-오버레이</source>
        <translation>-overlays</translation>
    </message>
    <message>
        <source>보이는 대로 저장</source>
        <translation>Save as Seen</translation>
    </message>
    <message>
        <source>-화면</source>
        <translation>-screen</translation>
    </message>
    <message>
        <source>그림을 복사했습니다.</source>
        <translation>Picture copied.</translation>
    </message>
    <message>
        <source>화면을 복사했습니다.</source>
        <translation>Screen copied.</translation>
    </message>
    <message>
        <source>복사했습니다: %1</source>
        <translation>Copied: %1</translation>
    </message>
    <message>
        <source>없음</source>
        <translation>None</translation>
    </message>
    <message>
        <source>목록 지우기(&amp;C)</source>
        <translation>&amp;Clear List</translation>
    </message>
    <message>
        <source>그림을 돌릴 메모리가 부족합니다.</source>
        <translation>There is too little memory to turn the picture.</translation>
    </message>
</context>
<context>
    <name>ormalux::viewer::StatusLine</name>
    <message>
        <source>마우스 아래의 화소</source>
        <translation>Pixel under the mouse</translation>
    </message>
    <message>
        <source>그림 순서</source>
        <translation>Place in the list of pictures</translation>
    </message>
    <message>
        <source>그림 크기</source>
        <translation>Size of the picture</translation>
    </message>
    <message>
        <source>ROI 영역</source>
        <translation>Region of interest</translation>
    </message>
    <message>
        <source>배율</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>값 %1</source>
        <translation>Value %1</translation>
    </message>
    <message>
        <source>%1 x %2  %3 bit</source>
        <translation>%1 x %2  %3 bit</translation>
    </message>
    <message>
        <source>그림 없음</source>
        <translation>No picture</translation>
    </message>
    <message>
        <source>%1비트를 8비트로 줄였습니다</source>
        <translation>%1 bits cut to 8</translation>
    </message>
    <message>
        <source>파일에는 채널마다 %1비트가 있습니다. 보이고 재고 저장하는 것은 8비트로 줄인 그림입니다.</source>
        <translation>The file has %1 bits a channel. What is shown, measured and saved is the picture reduced to 8 bits.</translation>
    </message>
    <message>
        <source>%1비트 중 %2비트만 쓰여 어둡습니다 (8비트로 줄임)</source>
        <translation>Dark: only %2 of %1 bits are used (cut to 8 bits)</translation>
    </message>
</context>
</TS>
