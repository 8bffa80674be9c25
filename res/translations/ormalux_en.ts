<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="ko">
<context>
    <name>BlobDlg</name>
    <message>
        <source>Blob</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>White</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>임계값보다 밝은 영역</source>
        <translation>Regions brighter than the threshold</translation>
    </message>
    <message>
        <source>Black</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>임계값보다 밝지 않은 영역</source>
        <translation>Regions not brighter than the threshold</translation>
    </message>
    <message>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Smallest Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>~</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Largest Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Smallest Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Largest Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sort</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scan Order</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pixel Count</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CBlobDlg</name>
    <message>
        <source>취소했습니다.</source>
        <translation>Cancelled.</translation>
    </message>
    <message>
        <source>영상이 없습니다.</source>
        <translation>There is no picture.</translation>
    </message>
    <message>
        <source>No.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Threshold: %1   Count: %2   Pixels: %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>메모리가 부족합니다.</source>
        <translation>There is too little memory.</translation>
    </message>
    <message>
        <source>영역에 경계가 없습니다.</source>
        <translation>There is no edge in the region.</translation>
    </message>
    <message>
        <source>최소 크기가 최대 크기보다 큽니다.</source>
        <translation>The smallest size is larger than the largest.</translation>
    </message>
    <message>
        <source>찾은 것이 없습니다.</source>
        <translation>Nothing was found.</translation>
    </message>
    <message>
        <source>너무 많아 목록에 싣지 않았습니다. 크기 범위를 좁히십시오.</source>
        <translation>Too many to list. Narrow the range of sizes.</translation>
    </message>
    <message>
        <source>처음 %1개만 목록에, 처음 %2개만 영상에 표시합니다.</source>
        <translation>The first %1 are listed, the first %2 are drawn in the picture.</translation>
    </message>
    <message>
        <source>처음 %1개만 영상에 표시합니다.</source>
        <translation>The first %1 are drawn in the picture.</translation>
    </message>
    <message>
        <source>Save Ocr Source File ...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Match Source File ...</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CHistogramDlg</name>
    <message>
        <source>영상이 없습니다.</source>
        <translation>There is no picture.</translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mean</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Std. Deviation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Min</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Level</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Count</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Percent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Level %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CKestWnd</name>
    <message>
        <source>흑백 그림에서만 실행할 수 있습니다.</source>
        <translation>This works on gray pictures only.</translation>
    </message>
    <message>
        <source>나머지 버튼</source>
        <translation>More buttons</translation>
    </message>
    <message>
        <source>BMP 파일 열기</source>
        <translation>Open a BMP file</translation>
    </message>
    <message>
        <source>BMP 파일로 저장 하기</source>
        <translation>Save as a BMP file</translation>
    </message>
    <message>
        <source>1:1 보기</source>
        <translation>Show 1:1</translation>
    </message>
    <message>
        <source>화면에 꽉 차게 보기</source>
        <translation>Fit to the window</translation>
    </message>
    <message>
        <source>확대</source>
        <translation>Zoom in</translation>
    </message>
    <message>
        <source>축소</source>
        <translation>Zoom out</translation>
    </message>
    <message>
        <source>ROI 영역 설정 하기</source>
        <translation>Set the region of interest</translation>
    </message>
    <message>
        <source>왼쪽으로 90도 돌리기</source>
        <translation>Turn 90° left</translation>
    </message>
    <message>
        <source>오른쪽으로 90도 돌리기</source>
        <translation>Turn 90° right</translation>
    </message>
    <message>
        <source>좌우 바꾸기</source>
        <translation>Flip horizontally</translation>
    </message>
    <message>
        <source>상하 바꾸기</source>
        <translation>Flip vertically</translation>
    </message>
    <message>
        <source>180도 돌리기</source>
        <translation>Turn 180°</translation>
    </message>
    <message>
        <source>임의로 돌리기</source>
        <translation>Turn freely</translation>
    </message>
    <message>
        <source>Gamma, Light, Erode, Dilate, Open Box, Close Box</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Histogram Equalize, Normalize, Root, Log, Stretch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Blur, Soften, Gaussian 5X5, Gaussian 3X3, Sharpen, Emboss, Edge, Laplacian, User Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>BLOB Object 추출 하기</source>
        <translation>Find blobs</translation>
    </message>
    <message>
        <source>히스토그램 보기</source>
        <translation>Show the histogram</translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Double Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Point 게이지</source>
        <translation>Point gauge</translation>
    </message>
    <message>
        <source>Line 게이지</source>
        <translation>Line gauge</translation>
    </message>
    <message>
        <source>OCR</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Match</source>
        <translation type="unfinished"></translation>
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
        <source>그림 파일 열기</source>
        <translation>Open Picture</translation>
    </message>
    <message>
        <source>그림 파일 저장</source>
        <translation>Save Picture</translation>
    </message>
    <message>
        <source>파일을 읽을 수 없습니다.</source>
        <translation>The file cannot be read.</translation>
    </message>
    <message>
        <source>8비트 또는 24비트 BMP 파일이 아닙니다.</source>
        <translation>This is not a BMP file of 8 or 24 bits.</translation>
    </message>
    <message>
        <source>파일이 중간에 끊겨 있습니다.</source>
        <translation>The file ends too early.</translation>
    </message>
    <message>
        <source>그림이 너무 큽니다.</source>
        <translation>The picture is too large.</translation>
    </message>
    <message>
        <source>메모리가 부족합니다.</source>
        <translation>There is too little memory.</translation>
    </message>
    <message>
        <source>파일을 저장할 수 없습니다.</source>
        <translation>The file cannot be saved.</translation>
    </message>
    <message>
        <source>저장할 그림이 없습니다.</source>
        <translation>There is no picture to save.</translation>
    </message>
</context>
<context>
    <name>CLineGauageDlg</name>
    <message>
        <source>영상이 없습니다.</source>
        <translation>There is no picture.</translation>
    </message>
    <message>
        <source>x1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>y1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>x2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>y2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Center X</source>
        <translation>Centre X</translation>
    </message>
    <message>
        <source>Center Y</source>
        <translation>Centre Y</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>영역에 경계가 없습니다.</source>
        <translation>There is no edge in the region.</translation>
    </message>
    <message>
        <source>임계값이 0이면 측정하지 않습니다.</source>
        <translation>A threshold of 0 measures nothing.</translation>
    </message>
    <message>
        <source>영역이 너무 작아 측정할 수 없습니다.</source>
        <translation>The region is too small to measure.</translation>
    </message>
    <message>
        <source>영역의 중심선 위에 경계가 없습니다.</source>
        <translation>There is no edge on the centre line of the region.</translation>
    </message>
    <message>
        <source>경계를 찾지 못했습니다.</source>
        <translation>No edge was found.</translation>
    </message>
    <message>
        <source>Lines: %1 / %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1°</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>-</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(%1, %2) - (%3, %4)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CMatchDlg</name>
    <message>
        <source>영역에 경계가 없습니다.</source>
        <translation>There is no edge in the region.</translation>
    </message>
    <message>
        <source>찾은 패턴이 없습니다.</source>
        <translation>No pattern was found.</translation>
    </message>
    <message>
        <source>No.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right-Left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bottom-Top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Yield</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CMatchSrcDlg</name>
    <message>
        <source>확인</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>취소</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>COcrMatchDlg</name>
    <message>
        <source>최소 크기가 최대 크기보다 큽니다.</source>
        <translation>The smallest size is larger than the largest.</translation>
    </message>
    <message>
        <source>영역에 경계가 없습니다.</source>
        <translation>There is no edge in the region.</translation>
    </message>
    <message>
        <source>찾은 글자가 없습니다.</source>
        <translation>No character was found.</translation>
    </message>
    <message>
        <source>No.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Char</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Yield</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Black Yield</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>White Yield</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>COcrSrcDlg</name>
    <message>
        <source>확인</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>취소</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>CPatternEditDlg</name>
    <message>
        <source>파일을 열 수 없습니다: %1</source>
        <translation>The file cannot be opened: %1</translation>
    </message>
    <message>
        <source>소스 파일이 아니거나 손상된 파일입니다: %1</source>
        <translation>This is not a source file, or it is damaged: %1</translation>
    </message>
    <message>
        <source>편집하기에 너무 큰 소스입니다: %1</source>
        <translation>The source is too large to edit: %1</translation>
    </message>
    <message>
        <source>메모리 부족 !!</source>
        <translation>Too little memory!</translation>
    </message>
    <message>
        <source>Black: %1   White: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>크기를 %1 x %2 (으)로 바꿀 수 없습니다.</source>
        <translation>The size cannot become %1 x %2.</translation>
    </message>
    <message>
        <source>다른 이름으로 저장</source>
        <translation>Save As</translation>
    </message>
    <message>
        <source>저장 되었습니다: %1</source>
        <translation>Saved: %1</translation>
    </message>
    <message>
        <source>파일을 저장할 수 없습니다: %1</source>
        <translation>The file cannot be saved: %1</translation>
    </message>
    <message>
        <source>저장하지 않은 변경이 있습니다. 저장하시겠습니까?</source>
        <translation>There are unsaved changes. Save them?</translation>
    </message>
    <message>
        <source>저장</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>저장 안 함</source>
        <translation>Discard</translation>
    </message>
    <message>
        <source>취소</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>CPointGauageDlg</name>
    <message>
        <source>영상에서 마우스로 선을 그리십시오.</source>
        <translation>Draw a line in the picture with the mouse.</translation>
    </message>
    <message>
        <source>No.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Level</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>영상이 없습니다.</source>
        <translation>There is no picture.</translation>
    </message>
    <message>
        <source>영역에 경계가 없습니다.</source>
        <translation>There is no edge in the region.</translation>
    </message>
    <message>
        <source>임계값이 0이면 측정하지 않습니다.</source>
        <translation>A threshold of 0 measures nothing.</translation>
    </message>
    <message>
        <source>선 위에서 경계를 찾지 못했습니다.</source>
        <translation>No edge was found on the line.</translation>
    </message>
    <message>
        <source>Best: -</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Best: (%1, %2)   Contrast: %3   Count: %4</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CThresholdDlg</name>
    <message>
        <source>영상이 없습니다.</source>
        <translation>There is no picture.</translation>
    </message>
    <message>
        <source>영역에 경계가 없습니다.</source>
        <translation>There is no edge in the region.</translation>
    </message>
    <message>
        <source>이 기능은 8비트 회색조 영상에만 적용할 수 있습니다.</source>
        <translation>This applies to 8-bit gray pictures only.</translation>
    </message>
</context>
<context>
    <name>CUserFilterDlg</name>
    <message>
        <source>직접 입력</source>
        <translation>Own entry</translation>
    </message>
</context>
<context>
    <name>DoubleThresholdDlg</name>
    <message>
        <source>Double Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Upper Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lower Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>두 값 사이의 픽셀이 이 값이 되고, 나머지는 255이면 0, 아니면 255가 됩니다.</source>
        <translation>Pixels between the two values become this one; the others become 0 when it is 255, else 255.</translation>
    </message>
</context>
<context>
    <name>GammaDlg</name>
    <message>
        <source>Gamma</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HistogramDlg</name>
    <message>
        <source>Histogram</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Gray</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;R</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>G</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;B</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Logarithmic</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Low Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>~</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>High Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Double Threshold Preview</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LightenDlg</name>
    <message>
        <source>Lighten</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Contrast (%)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LineGauageDlg</name>
    <message>
        <source>Line Gauage</source>
        <translation>Line Gauge</translation>
    </message>
    <message>
        <source>Polarity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Black → White</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>어두운 쪽에서 밝은 쪽으로: 왼쪽에서 오른쪽, 위에서 아래</source>
        <translation>From dark to bright: left to right, top to bottom</translation>
    </message>
    <message>
        <source>White → Black</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>밝은 쪽에서 어두운 쪽으로: 왼쪽에서 오른쪽, 위에서 아래</source>
        <translation>From bright to dark: left to right, top to bottom</translation>
    </message>
    <message>
        <source>Direction</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vertical</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>세로 방향의 경계: 행을 따라 찾습니다.</source>
        <translation>A vertical edge: looked for along the rows.</translation>
    </message>
    <message>
        <source>Horizontal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>가로 방향의 경계: 열을 따라 찾습니다.</source>
        <translation>A horizontal edge: looked for along the columns.</translation>
    </message>
    <message>
        <source>Step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>측정하는 열 사이의 간격입니다. 세로 방향의 경계는 모든 행을 측정합니다.</source>
        <translation>Columns from one that is measured to the next. For a vertical edge every row is measured.</translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ends</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MatchDlg</name>
    <message>
        <source>Match</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Threshold Range</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Below Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>~</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Above Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pattern Source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>매칭 결과</source>
        <translation>Results</translation>
    </message>
    <message>
        <source>좌표는 ROI의 왼쪽 위를 기준으로 합니다.</source>
        <translation>Coordinates count from the region&apos;s top left corner.</translation>
    </message>
    <message>
        <source>매칭</source>
        <translation>Match</translation>
    </message>
</context>
<context>
    <name>MatchSrcDlg</name>
    <message>
        <source>Match 소스</source>
        <translation>Match Source</translation>
    </message>
    <message>
        <source>&amp;Black Object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;White Object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Key:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OcrMatchDlg</name>
    <message>
        <source>OCR Match</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Smallest Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>~</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Largest Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Smallest Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Largest Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OCR Char Source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>매칭 결과</source>
        <translation>Results</translation>
    </message>
    <message>
        <source>읽은 글자</source>
        <translation>Text read</translation>
    </message>
    <message>
        <source>매칭</source>
        <translation>Match</translation>
    </message>
</context>
<context>
    <name>OcrSrcDlg</name>
    <message>
        <source>Ocr Source</source>
        <translation>OCR Source</translation>
    </message>
    <message>
        <source>&amp;Key:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PatternEditDlg</name>
    <message>
        <source>패턴 소스 편집</source>
        <translation>Edit a Pattern Source</translation>
    </message>
    <message>
        <source>Image Pixel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>왼쪽 버튼: 검정, 오른쪽 버튼: 흰색
방향키: 이동, Space / B: 검정, W: 흰색, Shift / Ctrl + 방향키: 검정 / 흰색으로 그리며 이동</source>
        <translation>Left button: black, right button: white
Arrows: move, Space / B: black, W: white, Shift / Ctrl + arrows: move drawing black / white</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Key:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Polarity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Black Object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>White Object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Width:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Height:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>크기 변경</source>
        <translation>Change Size</translation>
    </message>
    <message>
        <source>좌우 바꿈</source>
        <translation>Flip Horizontally</translation>
    </message>
    <message>
        <source>상하 바꿈</source>
        <translation>Flip Vertically</translation>
    </message>
    <message>
        <source>실행 취소</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>Ctrl+Z</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>다시 실행</source>
        <translation>Redo</translation>
    </message>
    <message>
        <source>Ctrl+Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>저장</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Ctrl+S</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>다른 이름으로 저장 ...</source>
        <translation>Save As ...</translation>
    </message>
    <message>
        <source>닫기</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>PointGauageDlg</name>
    <message>
        <source>Point Gauage</source>
        <translation>Point Gauge</translation>
    </message>
    <message>
        <source>Line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>x1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>y1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>선 그리기</source>
        <translation>Draw Line</translation>
    </message>
    <message>
        <source>영상에서 마우스로 선을 그립니다.</source>
        <translation>Draws a line in the picture with the mouse.</translation>
    </message>
    <message>
        <source>x2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>y2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>영역 중앙</source>
        <translation>Region Middle</translation>
    </message>
    <message>
        <source>영역의 가운데 행을 따라 측정합니다.</source>
        <translation>Measures along the middle row of the region.</translation>
    </message>
    <message>
        <source>Polarity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Black → White</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>어두운 쪽에서 밝은 쪽으로: 왼쪽에서 오른쪽, 위에서 아래</source>
        <translation>From dark to bright: left to right, top to bottom</translation>
    </message>
    <message>
        <source>White → Black</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>밝은 쪽에서 어두운 쪽으로: 왼쪽에서 오른쪽, 위에서 아래</source>
        <translation>From bright to dark: left to right, top to bottom</translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Profile</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>선을 따른 밝기입니다. 끌어서 임계값을 바꿉니다.</source>
        <translation>Levels along the line. Drag to change the threshold.</translation>
    </message>
</context>
<context>
    <name>RotateDlg</name>
    <message>
        <source>Rotate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Angle (°)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Centre</translation>
    </message>
    <message>
        <source>&amp;X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Center X</source>
        <translation>Centre X</translation>
    </message>
    <message>
        <source>&amp;Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Center Y</source>
        <translation>Centre Y</translation>
    </message>
    <message>
        <source>영상에서 선택</source>
        <translation>Choose in the Picture</translation>
    </message>
    <message>
        <source>누른 다음 영상에서 회전 중심을 클릭합니다.</source>
        <translation>Press, then click the centre of the turn in the picture.</translation>
    </message>
    <message>
        <source>영상 중심</source>
        <translation>Picture Centre</translation>
    </message>
    <message>
        <source>Fill</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>호출에만 전달되는 값입니다. 빈 자리는 이웃 픽셀의 평균으로 채워집니다.</source>
        <translation>Only handed to the call. Gaps are filled with the mean of the neighbouring pixels.</translation>
    </message>
</context>
<context>
    <name>ThresholdDlg</name>
    <message>
        <source>Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Auto Threshold Step</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UserFilterDlg</name>
    <message>
        <source>User Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Kernel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Divisor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>0이면 나누지 않습니다.</source>
        <translation>0 does not divide.</translation>
    </message>
    <message>
        <source>커널의 합</source>
        <translation>Sum of the Kernel</translation>
    </message>
    <message>
        <source>커널 값의 합을 Divisor로 합니다.</source>
        <translation>The divisor becomes the sum of the kernel&apos;s values.</translation>
    </message>
    <message>
        <source>&amp;Offset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Threaded</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ormalux::EffectDlg</name>
    <message>
        <source>영상이 없습니다.</source>
        <translation>There is no picture.</translation>
    </message>
    <message>
        <source>이 기능은 8비트 회색조 영상에만 적용할 수 있습니다.</source>
        <translation>This applies to 8-bit gray pictures only.</translation>
    </message>
</context>
<context>
    <name>ormalux::KernelPreset</name>
    <message>
        <source>Identity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Blur</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Soften</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gassian 3x3</source>
        <translation>Gaussian 3x3</translation>
    </message>
    <message>
        <source>Sharpen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Emboss</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edge</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Laplacian</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sobel, horizontal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sobel, vertical</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ormalux::ProfilePlot</name>
    <message>
        <source>(%1, %2): %3</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ormalux::RecipeFile</name>
    <message>
        <source>레시피 파일을 읽을 수 없습니다: %1</source>
        <translation>The recipe file cannot be read: %1</translation>
    </message>
    <message>
        <source>레시피 파일이 아닙니다: %1</source>
        <translation>This is not a recipe file: %1</translation>
    </message>
    <message>
        <source>레시피 파일을 저장할 수 없습니다: %1</source>
        <translation>The recipe file cannot be saved: %1</translation>
    </message>
</context>
<context>
    <name>ormalux::ResultTable</name>
    <message>
        <source>CSV로 내보내기</source>
        <translation>Export as CSV</translation>
    </message>
    <message>
        <source>파일을 저장할 수 없습니다: %1</source>
        <translation>The file cannot be saved: %1</translation>
    </message>
    <message>
        <source>제목과 함께 복사</source>
        <translation>Copy with Headings</translation>
    </message>
    <message>
        <source>CSV로 내보내기 ...</source>
        <translation>Export as CSV ...</translation>
    </message>
</context>
<context>
    <name>ormalux::SearchDlg</name>
    <message>
        <source>취소했습니다.</source>
        <translation>Cancelled.</translation>
    </message>
    <message>
        <source>영상이 없습니다.</source>
        <translation>There is no picture.</translation>
    </message>
</context>
<context>
    <name>ormalux::SourceList</name>
    <message>
        <source>패턴 Source 추가</source>
        <translation>Add Pattern Source</translation>
    </message>
    <message>
        <source>패턴 Source 제거</source>
        <translation>Remove Pattern Source</translation>
    </message>
    <message>
        <source>Pattern Source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pattern Match Source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pattern Match Source Files (*.mcs) (*.mcs)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Source Char 추가</source>
        <translation>Add Source Char</translation>
    </message>
    <message>
        <source>Source Char 제거</source>
        <translation>Remove Source Char</translation>
    </message>
    <message>
        <source>OCR Char Source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OCR Match Source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ocr Match Source Files (*.ocs) (*.ocs)</source>
        <translation>OCR Match Source Files (*.ocs) (*.ocs)</translation>
    </message>
    <message>
        <source>읽을 수 없거나 Match 소스가 아닙니다: %1</source>
        <translation>Cannot be read or is not a match source: %1</translation>
    </message>
    <message>
        <source>패턴 편집</source>
        <translation>Edit Pattern</translation>
    </message>
    <message>
        <source>위로</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>아래로</source>
        <translation>Down</translation>
    </message>
    <message>
        <source>No.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1
Black %2, White %3</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ormalux::SourcePreview</name>
    <message>
        <source>Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 x %2, Black %3, White %4</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ormalux::SourceSaving</name>
    <message>
        <source>저장 되었습니다.</source>
        <translation>Saved.</translation>
    </message>
    <message>
        <source>파일을 저장할 수 없습니다: %1</source>
        <translation>The file cannot be saved: %1</translation>
    </message>
    <message>
        <source>ROI 영역이 없습니다.</source>
        <translation>There is no region of interest.</translation>
    </message>
</context>
<context>
    <name>ormalux::ThresholdGroup</name>
    <message>
        <source>Auto Threshold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ormalux::ToolButtonRow</name>
    <message>
        <source>취소</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Script to Clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Program to Clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add to Recipe ...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>적용</source>
        <translation>Apply</translation>
    </message>
    <message>
        <source>닫기</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>ormalux::ToolDialog</name>
    <message>
        <source>컬러 영상은 회색조 (R + G + B) / 3 으로 처리합니다.</source>
        <translation>A colour picture is processed in gray, (R + G + B) / 3.</translation>
    </message>
    <message>
        <source>Add to Recipe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recipe (*.json)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>레시피에 추가했습니다: %1</source>
        <translation>Added to the recipe: %1</translation>
    </message>
</context>
</TS>
