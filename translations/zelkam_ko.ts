<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko" sourcelanguage="en">
    <context>
        <name>DocumentPicker</name>
        <message>
            <source>Selected</source>
            <translation>선택됨</translation>
        </message>
        <message>
            <source>This kind cannot be chosen here</source>
            <translation>이 종류는 여기서 선택할 수 없습니다</translation>
        </message>
        <message>
            <source>You may not open this</source>
            <translation>열 수 있는 권한이 없습니다</translation>
        </message>
        <message>
            <source>Not a document</source>
            <translation>문서가 아닙니다</translation>
        </message>
    </context>
    <context>
        <name>DocumentPlaces</name>
        <message>
            <source>Home</source>
            <translation>홈</translation>
        </message>
        <message>
            <source>Documents</source>
            <translation>문서</translation>
        </message>
        <message>
            <source>Downloads</source>
            <translation>다운로드</translation>
        </message>
        <message>
            <source>Pictures</source>
            <translation>사진</translation>
        </message>
        <message>
            <source>Music</source>
            <translation>음악</translation>
        </message>
        <message>
            <source>Videos</source>
            <translation>비디오</translation>
        </message>
        <message>
            <source>Desktop</source>
            <translation>바탕화면</translation>
        </message>
        <message>
            <source>This device</source>
            <translation>이 기기</translation>
        </message>
    </context>
    <context>
        <name>FileName</name>
        <message>
            <source>(unnamed)</source>
            <translation>(이름 없음)</translation>
        </message>
    </context>
    <context>
        <name>FileSaving</name>
        <message>
            <source>Enter a name.</source>
            <translation>이름을 입력하십시오.</translation>
        </message>
        <message>
            <source>A name cannot contain a slash.</source>
            <translation>이름에는 슬래시를 쓸 수 없습니다.</translation>
        </message>
        <message>
            <source>This name is not possible here.</source>
            <translation>이 이름은 여기에서 쓸 수 없습니다.</translation>
        </message>
        <message>
            <source>This name is too long.</source>
            <translation>이름이 너무 깁니다.</translation>
        </message>
        <message>
            <source>This name is taken already.</source>
            <translation>이미 사용 중인 이름입니다.</translation>
        </message>
        <message>
            <source>You may not save in this folder.</source>
            <translation>이 폴더에는 저장할 수 없습니다.</translation>
        </message>
        <message>
            <source>This folder is no longer there.</source>
            <translation>이 폴더는 더 이상 없습니다.</translation>
        </message>
        <message>
            <source>There is not enough room left.</source>
            <translation>남은 공간이 부족합니다.</translation>
        </message>
        <message>
            <source>The file is too large for this drive.</source>
            <translation>파일이 이 드라이브에 비해 너무 큽니다.</translation>
        </message>
        <message>
            <source>It could not be saved.</source>
            <translation>저장할 수 없습니다.</translation>
        </message>
    </context>
    <context>
        <name>ToastActivityView</name>
        <message>
            <source>In progress</source>
            <translation>진행 중</translation>
        </message>
    </context>
    <context>
        <name>UIActivityViewController</name>
        <message>
            <source>The file cannot be read.</source>
            <translation>파일을 읽을 수 없습니다.</translation>
        </message>
        <message>
            <source>Open in Another App</source>
            <translation>다른 앱에서 열기</translation>
        </message>
        <message>
            <source>Save a Copy</source>
            <translation>사본 저장</translation>
        </message>
        <message>
            <source>Copy File</source>
            <translation>파일 복사</translation>
        </message>
        <message>
            <source>Send by E-Mail</source>
            <translation>이메일로 보내기</translation>
        </message>
        <message>
            <source>Show in Folder</source>
            <translation>폴더에서 보기</translation>
        </message>
        <message>
            <source>No application could open the file.</source>
            <translation>파일을 열 수 있는 앱이 없습니다.</translation>
        </message>
        <message>
            <source>No e-mail application could be started.</source>
            <translation>이메일 앱을 시작할 수 없습니다.</translation>
        </message>
        <message>
            <source>The folder could not be opened.</source>
            <translation>폴더를 열 수 없습니다.</translation>
        </message>
        <message>
            <source>Saved to “%1”</source>
            <translation>‘%1’에 저장됨</translation>
        </message>
        <message>
            <source>Copied</source>
            <translation>복사됨</translation>
        </message>
    </context>
    <context>
        <name>URLError</name>
        <message>
            <source>The download was cancelled.</source>
            <translation>다운로드가 취소되었습니다.</translation>
        </message>
        <message>
            <source>The address or a header of the request is not valid.</source>
            <translation>요청의 주소 또는 헤더가 올바르지 않습니다.</translation>
        </message>
        <message>
            <source>This kind of address is not supported.</source>
            <translation>지원되지 않는 주소입니다.</translation>
        </message>
        <message>
            <source>The request timed out.</source>
            <translation>요청 시간이 초과되었습니다.</translation>
        </message>
        <message>
            <source>There is no network connection.</source>
            <translation>네트워크에 연결되어 있지 않습니다.</translation>
        </message>
        <message>
            <source>The server could not be found.</source>
            <translation>서버를 찾을 수 없습니다.</translation>
        </message>
        <message>
            <source>Could not connect to the proxy server.</source>
            <translation>프록시 서버에 연결할 수 없습니다.</translation>
        </message>
        <message>
            <source>Could not connect to the server.</source>
            <translation>서버에 연결할 수 없습니다.</translation>
        </message>
        <message>
            <source>The network connection was lost.</source>
            <translation>네트워크 연결이 끊어졌습니다.</translation>
        </message>
        <message>
            <source>The server sent only a part of the file.</source>
            <translation>서버가 파일의 일부만 보냈습니다.</translation>
        </message>
        <message>
            <source>A secure connection to the server could not be made.</source>
            <translation>서버에 안전하게 연결할 수 없습니다.</translation>
        </message>
        <message>
            <source>The certificate of the server is not trusted.</source>
            <translation>서버의 인증서를 신뢰할 수 없습니다.</translation>
        </message>
        <message>
            <source>The server redirected the request too often.</source>
            <translation>서버가 요청을 너무 많이 리디렉션했습니다.</translation>
        </message>
        <message>
            <source>The server redirected the request to an address that is not supported.</source>
            <translation>서버가 지원되지 않는 주소로 요청을 리디렉션했습니다.</translation>
        </message>
        <message>
            <source>The server redirected the request to a place that is not allowed.</source>
            <translation>서버가 허용되지 않는 위치로 요청을 리디렉션했습니다.</translation>
        </message>
        <message>
            <source>The server sent an answer that is not valid.</source>
            <translation>서버가 잘못된 응답을 보냈습니다.</translation>
        </message>
        <message>
            <source>The server sent an answer that is too large.</source>
            <translation>서버가 너무 큰 응답을 보냈습니다.</translation>
        </message>
        <message>
            <source>The data from the server is damaged.</source>
            <translation>서버의 데이터가 손상되었습니다.</translation>
        </message>
        <message>
            <source>The file could not be made.</source>
            <translation>파일을 만들 수 없습니다.</translation>
        </message>
        <message>
            <source>The file could not be written.</source>
            <translation>파일을 쓸 수 없습니다.</translation>
        </message>
        <message>
            <source>There is not enough space for the file.</source>
            <translation>파일을 저장할 공간이 부족합니다.</translation>
        </message>
        <message>
            <source>The download failed.</source>
            <translation>다운로드에 실패했습니다.</translation>
        </message>
    </context>
    <context>
        <name>zelkam.mobile.ZelkamMobileContents</name>
        <message>
            <source>FILE_DOWNLOAD_TOAST_MESSAGE</source>
            <translation>다운로드가 완료되었습니다.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::CameraView</name>
        <message>
            <source>Switch camera</source>
            <translation>카메라 전환</translation>
        </message>
        <message>
            <source>Cancel</source>
            <translation>취소</translation>
        </message>
        <message>
            <source>Retake</source>
            <translation>다시 찍기</translation>
        </message>
        <message>
            <source>Use photo</source>
            <translation>사진 사용</translation>
        </message>
        <message>
            <source>No camera found</source>
            <translation>카메라를 찾을 수 없음</translation>
        </message>
        <message>
            <source>Connect a camera and try again.</source>
            <translation>카메라를 연결하고 다시 시도하십시오.</translation>
        </message>
        <message>
            <source>The camera cannot be used</source>
            <translation>카메라를 사용할 수 없음</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentBrowser</name>
        <message numerus="yes">
            <source>%Ln item(s) so far</source>
            <translation>
                <numerusform>지금까지 %Ln개 항목</numerusform>
            </translation>
        </message>
        <message>
            <source>Documents</source>
            <translation>문서</translation>
        </message>
        <message>
            <source>Folder above</source>
            <translation>상위 폴더</translation>
        </message>
        <message>
            <source>It is no longer there.</source>
            <translation>더 이상 없습니다.</translation>
        </message>
        <message>
            <source>No name in this folder contains “%1”.</source>
            <translation>이 폴더에는 ‘%1’이(가) 포함된 이름이 없습니다.</translation>
        </message>
        <message>
            <source>Nothing found</source>
            <translation>찾을 수 없음</translation>
        </message>
        <message>
            <source>Places</source>
            <translation>위치</translation>
        </message>
        <message>
            <source>Reading the folder…</source>
            <translation>폴더를 읽는 중…</translation>
        </message>
        <message>
            <source>This folder cannot be opened</source>
            <translation>이 폴더를 열 수 없음</translation>
        </message>
        <message>
            <source>This folder is empty</source>
            <translation>이 폴더는 비어 있습니다</translation>
        </message>
        <message>
            <source>You do not have the permission.</source>
            <translation>권한이 없습니다.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentPickerView</name>
        <message>
            <source>Clear</source>
            <translation>선택 해제</translation>
        </message>
        <message>
            <source>Open</source>
            <translation>열기</translation>
        </message>
        <message>
            <source>Choose documents</source>
            <translation>문서 선택</translation>
        </message>
        <message>
            <source>Choose a document</source>
            <translation>문서 선택</translation>
        </message>
        <message>
            <source>Nothing selected</source>
            <translation>선택한 항목 없음</translation>
        </message>
        <message>
            <source>Choose one document</source>
            <translation>문서를 하나 선택하십시오</translation>
        </message>
        <message numerus="yes">
            <source>%Ln selected</source>
            <translation>
                <numerusform>%Ln개 선택됨</numerusform>
            </translation>
        </message>
        <message>
            <source>Opening…</source>
            <translation>여는 중…</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentPlacesList</name>
        <message>
            <source>Places</source>
            <translation>위치</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentSaveView</name>
        <message>
            <source>Save a Copy</source>
            <translation>사본 저장</translation>
        </message>
        <message>
            <source>Name</source>
            <translation>이름</translation>
        </message>
        <message>
            <source>Save</source>
            <translation>저장</translation>
        </message>
        <message>
            <source>Saving…</source>
            <translation>저장하는 중…</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ImageGridPickerController</name>
        <message numerus="yes">
            <source>You can select up to %Ln photo(s).</source>
            <translation>
                <numerusform>사진을 %Ln장까지 선택할 수 있습니다.</numerusform>
            </translation>
        </message>
        <message>
            <source>The photo could not be saved.</source>
            <translation>사진을 저장할 수 없습니다.</translation>
        </message>
        <message>
            <source>%1 of %2 selected</source>
            <translation>%2장 중 %1장 선택됨</translation>
        </message>
        <message numerus="yes">
            <source>%Ln selected</source>
            <translation>
                <numerusform>%Ln개 선택됨</numerusform>
            </translation>
        </message>
        <message>
            <source>Select photos</source>
            <translation>사진 선택</translation>
        </message>
    </context>
    <context>
        <name>zelkam::LoadingView</name>
        <message>
            <source>Loading</source>
            <translation>로드 중</translation>
        </message>
    </context>
    <context>
        <name>zelkam::MediaView</name>
        <message>
            <source>Position</source>
            <translation>위치</translation>
        </message>
        <message>
            <source>The file cannot be played on this device.</source>
            <translation>이 기기에서 파일을 재생할 수 없습니다.</translation>
        </message>
        <message>
            <source>Pause</source>
            <translation>일시 정지</translation>
        </message>
        <message>
            <source>Play</source>
            <translation>재생</translation>
        </message>
    </context>
    <context>
        <name>zelkam::MessageScreen</name>
        <message>
            <source>Try Again</source>
            <translation>다시 시도</translation>
        </message>
    </context>
    <context>
        <name>zelkam::NewFolderRow</name>
        <message>
            <source>New Folder</source>
            <translation>새로운 폴더</translation>
        </message>
        <message>
            <source>Create</source>
            <translation>만들기</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PhotoGridView</name>
        <message>
            <source>Photos</source>
            <translation>사진</translation>
        </message>
        <message>
            <source>Take a photo</source>
            <translation>사진 찍기</translation>
        </message>
        <message>
            <source>%1, selected as number %2</source>
            <translation>%1, %2번째로 선택됨</translation>
        </message>
        <message>
            <source>Take photo</source>
            <translation>사진 찍기</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PhotoLibraryView</name>
        <message>
            <source>Photos</source>
            <translation>사진</translation>
        </message>
        <message>
            <source>There is no pictures folder</source>
            <translation>사진 폴더가 없음</translation>
        </message>
        <message>
            <source>It is missing, or cannot be read.</source>
            <translation>없거나 읽을 수 없습니다.</translation>
        </message>
        <message>
            <source>No photos yet</source>
            <translation>아직 사진이 없음</translation>
        </message>
        <message>
            <source>Pictures in your pictures folder appear here.</source>
            <translation>사진 폴더의 사진이 여기에 표시됩니다.</translation>
        </message>
        <message>
            <source>Looking for photos…</source>
            <translation>사진을 찾는 중…</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PickerSearchField</name>
        <message>
            <source>Search in this folder</source>
            <translation>이 폴더에서 검색</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PictureCamera</name>
        <message>
            <source>The picture for the camera cannot be read.</source>
            <translation>카메라용 사진을 읽을 수 없습니다.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::QLPreviewController</name>
        <message>
            <source>The file is not there any more.</source>
            <translation>파일이 더 이상 없습니다.</translation>
        </message>
        <message>
            <source>The file cannot be read.</source>
            <translation>파일을 읽을 수 없습니다.</translation>
        </message>
        <message>
            <source>This is not a file that can be shown.</source>
            <translation>표시할 수 없는 파일입니다.</translation>
        </message>
        <message>
            <source>The image is too large to be shown.</source>
            <translation>이미지가 너무 커서 표시할 수 없습니다.</translation>
        </message>
        <message>
            <source>The image is damaged or of a kind that cannot be shown.</source>
            <translation>이미지가 손상되었거나 표시할 수 없는 종류입니다.</translation>
        </message>
        <message>
            <source>The document is protected by a password.</source>
            <translation>문서가 암호로 보호되어 있습니다.</translation>
        </message>
        <message>
            <source>The document is damaged and cannot be shown.</source>
            <translation>문서가 손상되어 표시할 수 없습니다.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::SaveCopyViewController</name>
        <message>
            <source>Already in this folder</source>
            <translation>이 폴더에 이미 있음</translation>
        </message>
        <message>
            <source>Replace</source>
            <translation>대치</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ShareSheet</name>
        <message>
            <source>Cancel</source>
            <translation>취소</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ShutterButton</name>
        <message>
            <source>Take photo</source>
            <translation>사진 찍기</translation>
        </message>
    </context>
    <context>
        <name>zelkam::StatusBar</name>
        <message>
            <source>The network is in use</source>
            <translation>네트워크 사용 중</translation>
        </message>
    </context>
    <context>
        <name>zelkam::TextView</name>
        <message>
            <source>Only the beginning of this file is shown.</source>
            <translation>이 파일의 앞부분만 표시됩니다.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::UIActivityViewController</name>
        <message numerus="yes">
            <source>%n file(s)</source>
            <translation>
                <numerusform>파일 %n개</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>zelkam::UIBarButtonItem</name>
        <message>
            <source>Done</source>
            <translation>완료</translation>
        </message>
        <message>
            <source>Cancel</source>
            <translation>취소</translation>
        </message>
        <message>
            <source>Add</source>
            <translation>추가</translation>
        </message>
        <message>
            <source>Share</source>
            <translation>공유</translation>
        </message>
        <message>
            <source>Delete</source>
            <translation>삭제</translation>
        </message>
    </context>
    <context>
        <name>zelkam::UINavigationController</name>
        <message>
            <source>Back</source>
            <translation>뒤로</translation>
        </message>
    </context>
    <context>
        <name>zelkam::WebPage</name>
        <message>
            <source>Permission</source>
            <translation>권한</translation>
        </message>
        <message>
            <source>%1 asks for the use of a function of this device, such as the camera, the position or notifications. Allow it?</source>
            <translation>%1에서 카메라, 위치, 알림 등 이 기기의 기능을 사용하려고 합니다. 허용하시겠습니까?</translation>
        </message>
    </context>
    <context>
        <name>zelkam::WebViewController</name>
        <message>
            <source>The server answered with the status %1.</source>
            <translation>서버가 상태 %1(으)로 응답했습니다.</translation>
        </message>
        <message>
            <source>This page cannot be shown</source>
            <translation>이 페이지를 표시할 수 없음</translation>
        </message>
        <message>
            <source>The file could not be read.</source>
            <translation>파일을 읽을 수 없습니다.</translation>
        </message>
        <message>
            <source>%1 could not be reached, or did not give the page.</source>
            <translation>%1에 연결할 수 없거나 페이지를 받지 못했습니다.</translation>
        </message>
        <message>
            <source>This page has stopped</source>
            <translation>이 페이지가 중지됨</translation>
        </message>
        <message>
            <source>Something went wrong while the page was shown.</source>
            <translation>페이지를 표시하는 동안 문제가 발생했습니다.</translation>
        </message>
    </context>
</TS>
