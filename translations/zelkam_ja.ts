<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
    <context>
        <name>DocumentPicker</name>
        <message>
            <source>Selected</source>
            <translation>選択済み</translation>
        </message>
        <message>
            <source>This kind cannot be chosen here</source>
            <translation>この種類はここでは選択できません</translation>
        </message>
        <message>
            <source>You may not open this</source>
            <translation>開く権限がありません</translation>
        </message>
        <message>
            <source>Not a document</source>
            <translation>書類ではありません</translation>
        </message>
    </context>
    <context>
        <name>DocumentPlaces</name>
        <message>
            <source>Home</source>
            <translation>ホーム</translation>
        </message>
        <message>
            <source>Documents</source>
            <translation>書類</translation>
        </message>
        <message>
            <source>Downloads</source>
            <translation>ダウンロード</translation>
        </message>
        <message>
            <source>Pictures</source>
            <translation>ピクチャ</translation>
        </message>
        <message>
            <source>Music</source>
            <translation>ミュージック</translation>
        </message>
        <message>
            <source>Videos</source>
            <translation>ビデオ</translation>
        </message>
        <message>
            <source>Desktop</source>
            <translation>デスクトップ</translation>
        </message>
        <message>
            <source>This device</source>
            <translation>このデバイス</translation>
        </message>
    </context>
    <context>
        <name>FileName</name>
        <message>
            <source>(unnamed)</source>
            <translation>(名前なし)</translation>
        </message>
    </context>
    <context>
        <name>FileSaving</name>
        <message>
            <source>Enter a name.</source>
            <translation>名前を入力してください。</translation>
        </message>
        <message>
            <source>A name cannot contain a slash.</source>
            <translation>名前にスラッシュは使えません。</translation>
        </message>
        <message>
            <source>This name is not possible here.</source>
            <translation>この名前はここでは使えません。</translation>
        </message>
        <message>
            <source>This name is too long.</source>
            <translation>この名前は長すぎます。</translation>
        </message>
        <message>
            <source>This name is taken already.</source>
            <translation>この名前はすでに使われています。</translation>
        </message>
        <message>
            <source>You may not save in this folder.</source>
            <translation>このフォルダには保存できません。</translation>
        </message>
        <message>
            <source>This folder is no longer there.</source>
            <translation>このフォルダはもうありません。</translation>
        </message>
        <message>
            <source>There is not enough room left.</source>
            <translation>空き容量が足りません。</translation>
        </message>
        <message>
            <source>The file is too large for this drive.</source>
            <translation>ファイルが大きすぎてこのドライブに入りません。</translation>
        </message>
        <message>
            <source>It could not be saved.</source>
            <translation>保存できませんでした。</translation>
        </message>
    </context>
    <context>
        <name>ToastActivityView</name>
        <message>
            <source>In progress</source>
            <translation>処理中</translation>
        </message>
    </context>
    <context>
        <name>UIActivityViewController</name>
        <message>
            <source>The file cannot be read.</source>
            <translation>ファイルを読み取れません。</translation>
        </message>
        <message>
            <source>Open in Another App</source>
            <translation>ほかのアプリで開く</translation>
        </message>
        <message>
            <source>Save a Copy</source>
            <translation>コピーを保存</translation>
        </message>
        <message>
            <source>Copy File</source>
            <translation>ファイルをコピー</translation>
        </message>
        <message>
            <source>Send by E-Mail</source>
            <translation>メールで送信</translation>
        </message>
        <message>
            <source>Show in Folder</source>
            <translation>フォルダに表示</translation>
        </message>
        <message>
            <source>No application could open the file.</source>
            <translation>ファイルを開けるアプリがありません。</translation>
        </message>
        <message>
            <source>No e-mail application could be started.</source>
            <translation>メールアプリを起動できませんでした。</translation>
        </message>
        <message>
            <source>The folder could not be opened.</source>
            <translation>フォルダを開けませんでした。</translation>
        </message>
        <message>
            <source>Saved to “%1”</source>
            <translation>“%1”に保存しました</translation>
        </message>
        <message>
            <source>Copied</source>
            <translation>コピーしました</translation>
        </message>
    </context>
    <context>
        <name>URLError</name>
        <message>
            <source>The download was cancelled.</source>
            <translation>ダウンロードはキャンセルされました。</translation>
        </message>
        <message>
            <source>The address or a header of the request is not valid.</source>
            <translation>リクエストのアドレスまたはヘッダが正しくありません。</translation>
        </message>
        <message>
            <source>This kind of address is not supported.</source>
            <translation>この種類のアドレスには対応していません。</translation>
        </message>
        <message>
            <source>The request timed out.</source>
            <translation>リクエストがタイムアウトしました。</translation>
        </message>
        <message>
            <source>There is no network connection.</source>
            <translation>ネットワークに接続されていません。</translation>
        </message>
        <message>
            <source>The server could not be found.</source>
            <translation>サーバが見つかりませんでした。</translation>
        </message>
        <message>
            <source>Could not connect to the proxy server.</source>
            <translation>プロキシサーバに接続できませんでした。</translation>
        </message>
        <message>
            <source>Could not connect to the server.</source>
            <translation>サーバに接続できませんでした。</translation>
        </message>
        <message>
            <source>The network connection was lost.</source>
            <translation>ネットワーク接続が切れました。</translation>
        </message>
        <message>
            <source>The server sent only a part of the file.</source>
            <translation>サーバはファイルの一部しか送信しませんでした。</translation>
        </message>
        <message>
            <source>A secure connection to the server could not be made.</source>
            <translation>サーバとの安全な接続を確立できませんでした。</translation>
        </message>
        <message>
            <source>The certificate of the server is not trusted.</source>
            <translation>サーバの証明書は信頼されていません。</translation>
        </message>
        <message>
            <source>The server redirected the request too often.</source>
            <translation>サーバによるリダイレクトの回数が多すぎます。</translation>
        </message>
        <message>
            <source>The server redirected the request to an address that is not supported.</source>
            <translation>サーバは対応していないアドレスにリダイレクトしました。</translation>
        </message>
        <message>
            <source>The server redirected the request to a place that is not allowed.</source>
            <translation>サーバは許可されていない場所にリダイレクトしました。</translation>
        </message>
        <message>
            <source>The server sent an answer that is not valid.</source>
            <translation>サーバの応答が正しくありません。</translation>
        </message>
        <message>
            <source>The server sent an answer that is too large.</source>
            <translation>サーバの応答が大きすぎます。</translation>
        </message>
        <message>
            <source>The data from the server is damaged.</source>
            <translation>サーバからのデータが壊れています。</translation>
        </message>
        <message>
            <source>The file could not be made.</source>
            <translation>ファイルを作成できませんでした。</translation>
        </message>
        <message>
            <source>The file could not be written.</source>
            <translation>ファイルを書き込めませんでした。</translation>
        </message>
        <message>
            <source>There is not enough space for the file.</source>
            <translation>ファイルを保存する空き容量が足りません。</translation>
        </message>
        <message>
            <source>The download failed.</source>
            <translation>ダウンロードに失敗しました。</translation>
        </message>
    </context>
    <context>
        <name>zelkam.mobile.ZelkamMobileContents</name>
        <message>
            <source>FILE_DOWNLOAD_TOAST_MESSAGE</source>
            <translation>をダウンロードしました。</translation>
        </message>
    </context>
    <context>
        <name>zelkam::CameraView</name>
        <message>
            <source>Switch camera</source>
            <translation>カメラを切り替える</translation>
        </message>
        <message>
            <source>Cancel</source>
            <translation>キャンセル</translation>
        </message>
        <message>
            <source>Retake</source>
            <translation>撮り直す</translation>
        </message>
        <message>
            <source>Use photo</source>
            <translation>写真を使用</translation>
        </message>
        <message>
            <source>No camera found</source>
            <translation>カメラが見つかりません</translation>
        </message>
        <message>
            <source>Connect a camera and try again.</source>
            <translation>カメラを接続してもう一度お試しください。</translation>
        </message>
        <message>
            <source>The camera cannot be used</source>
            <translation>カメラを使用できません</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentBrowser</name>
        <message numerus="yes">
            <source>%Ln item(s) so far</source>
            <translation>
                <numerusform>これまでに%Ln項目</numerusform>
            </translation>
        </message>
        <message>
            <source>Documents</source>
            <translation>書類</translation>
        </message>
        <message>
            <source>Folder above</source>
            <translation>上のフォルダ</translation>
        </message>
        <message>
            <source>It is no longer there.</source>
            <translation>もうありません。</translation>
        </message>
        <message>
            <source>No name in this folder contains “%1”.</source>
            <translation>このフォルダに「%1」を含む名前はありません。</translation>
        </message>
        <message>
            <source>Nothing found</source>
            <translation>見つかりません</translation>
        </message>
        <message>
            <source>Places</source>
            <translation>場所</translation>
        </message>
        <message>
            <source>Reading the folder…</source>
            <translation>フォルダを読み込み中…</translation>
        </message>
        <message>
            <source>This folder cannot be opened</source>
            <translation>このフォルダを開けません</translation>
        </message>
        <message>
            <source>This folder is empty</source>
            <translation>このフォルダは空です</translation>
        </message>
        <message>
            <source>You do not have the permission.</source>
            <translation>権限がありません。</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentPickerView</name>
        <message>
            <source>Clear</source>
            <translation>選択解除</translation>
        </message>
        <message>
            <source>Open</source>
            <translation>開く</translation>
        </message>
        <message>
            <source>Choose documents</source>
            <translation>書類を選択</translation>
        </message>
        <message>
            <source>Choose a document</source>
            <translation>書類を選択</translation>
        </message>
        <message>
            <source>Nothing selected</source>
            <translation>何も選択されていません</translation>
        </message>
        <message>
            <source>Choose one document</source>
            <translation>書類を1つ選択</translation>
        </message>
        <message numerus="yes">
            <source>%Ln selected</source>
            <translation>
                <numerusform>%Ln件を選択</numerusform>
            </translation>
        </message>
        <message>
            <source>Opening…</source>
            <translation>開いています…</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentPlacesList</name>
        <message>
            <source>Places</source>
            <translation>場所</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentSaveView</name>
        <message>
            <source>Save a Copy</source>
            <translation>コピーを保存</translation>
        </message>
        <message>
            <source>Name</source>
            <translation>名前</translation>
        </message>
        <message>
            <source>Save</source>
            <translation>保存</translation>
        </message>
        <message>
            <source>Saving…</source>
            <translation>保存しています…</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ImageGridPickerController</name>
        <message numerus="yes">
            <source>You can select up to %Ln photo(s).</source>
            <translation>
                <numerusform>写真は%Ln枚まで選択できます。</numerusform>
            </translation>
        </message>
        <message>
            <source>The photo could not be saved.</source>
            <translation>写真を保存できませんでした。</translation>
        </message>
        <message>
            <source>%1 of %2 selected</source>
            <translation>%2枚中%1枚を選択</translation>
        </message>
        <message numerus="yes">
            <source>%Ln selected</source>
            <translation>
                <numerusform>%Ln件を選択</numerusform>
            </translation>
        </message>
        <message>
            <source>Select photos</source>
            <translation>写真を選択</translation>
        </message>
    </context>
    <context>
        <name>zelkam::LoadingView</name>
        <message>
            <source>Loading</source>
            <translation>読み込み中</translation>
        </message>
    </context>
    <context>
        <name>zelkam::MediaView</name>
        <message>
            <source>Position</source>
            <translation>再生位置</translation>
        </message>
        <message>
            <source>The file cannot be played on this device.</source>
            <translation>このデバイスではファイルを再生できません。</translation>
        </message>
        <message>
            <source>Pause</source>
            <translation>一時停止</translation>
        </message>
        <message>
            <source>Play</source>
            <translation>再生</translation>
        </message>
    </context>
    <context>
        <name>zelkam::MessageScreen</name>
        <message>
            <source>Try Again</source>
            <translation>もう一度試す</translation>
        </message>
    </context>
    <context>
        <name>zelkam::NewFolderRow</name>
        <message>
            <source>New Folder</source>
            <translation>新規フォルダ</translation>
        </message>
        <message>
            <source>Create</source>
            <translation>作成</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PhotoGridView</name>
        <message>
            <source>Photos</source>
            <translation>写真</translation>
        </message>
        <message>
            <source>Take a photo</source>
            <translation>写真を撮る</translation>
        </message>
        <message>
            <source>%1, selected as number %2</source>
            <translation>%1、%2番目に選択</translation>
        </message>
        <message>
            <source>Take photo</source>
            <translation>写真を撮る</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PhotoLibraryView</name>
        <message>
            <source>Photos</source>
            <translation>写真</translation>
        </message>
        <message>
            <source>There is no pictures folder</source>
            <translation>ピクチャフォルダがありません</translation>
        </message>
        <message>
            <source>It is missing, or cannot be read.</source>
            <translation>存在しないか、読み取れません。</translation>
        </message>
        <message>
            <source>No photos yet</source>
            <translation>写真はまだありません</translation>
        </message>
        <message>
            <source>Pictures in your pictures folder appear here.</source>
            <translation>ピクチャフォルダの画像がここに表示されます。</translation>
        </message>
        <message>
            <source>Looking for photos…</source>
            <translation>写真を探しています…</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PickerSearchField</name>
        <message>
            <source>Search in this folder</source>
            <translation>このフォルダを検索</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PictureCamera</name>
        <message>
            <source>The picture for the camera cannot be read.</source>
            <translation>カメラ用の画像を読み取れません。</translation>
        </message>
    </context>
    <context>
        <name>zelkam::QLPreviewController</name>
        <message>
            <source>The file is not there any more.</source>
            <translation>ファイルはもうありません。</translation>
        </message>
        <message>
            <source>The file cannot be read.</source>
            <translation>ファイルを読み取れません。</translation>
        </message>
        <message>
            <source>This is not a file that can be shown.</source>
            <translation>このファイルは表示できません。</translation>
        </message>
        <message>
            <source>The image is too large to be shown.</source>
            <translation>画像が大きすぎて表示できません。</translation>
        </message>
        <message>
            <source>The image is damaged or of a kind that cannot be shown.</source>
            <translation>画像が壊れているか、表示できない種類です。</translation>
        </message>
        <message>
            <source>The document is protected by a password.</source>
            <translation>書類はパスワードで保護されています。</translation>
        </message>
        <message>
            <source>The document is damaged and cannot be shown.</source>
            <translation>書類が壊れているため表示できません。</translation>
        </message>
    </context>
    <context>
        <name>zelkam::SaveCopyViewController</name>
        <message>
            <source>Already in this folder</source>
            <translation>このフォルダにすでにあります</translation>
        </message>
        <message>
            <source>Replace</source>
            <translation>置き換える</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ShareSheet</name>
        <message>
            <source>Cancel</source>
            <translation>キャンセル</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ShutterButton</name>
        <message>
            <source>Take photo</source>
            <translation>写真を撮る</translation>
        </message>
    </context>
    <context>
        <name>zelkam::StatusBar</name>
        <message>
            <source>The network is in use</source>
            <translation>ネットワークを使用中</translation>
        </message>
    </context>
    <context>
        <name>zelkam::TextView</name>
        <message>
            <source>Only the beginning of this file is shown.</source>
            <translation>このファイルの先頭部分だけを表示しています。</translation>
        </message>
    </context>
    <context>
        <name>zelkam::UIActivityViewController</name>
        <message numerus="yes">
            <source>%n file(s)</source>
            <translation>
                <numerusform>%n個のファイル</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>zelkam::UIBarButtonItem</name>
        <message>
            <source>Done</source>
            <translation>完了</translation>
        </message>
        <message>
            <source>Cancel</source>
            <translation>キャンセル</translation>
        </message>
        <message>
            <source>Add</source>
            <translation>追加</translation>
        </message>
        <message>
            <source>Share</source>
            <translation>共有</translation>
        </message>
        <message>
            <source>Delete</source>
            <translation>削除</translation>
        </message>
    </context>
    <context>
        <name>zelkam::UINavigationController</name>
        <message>
            <source>Back</source>
            <translation>戻る</translation>
        </message>
    </context>
    <context>
        <name>zelkam::WebPage</name>
        <message>
            <source>Permission</source>
            <translation>許可</translation>
        </message>
        <message>
            <source>%1 asks for the use of a function of this device, such as the camera, the position or notifications. Allow it?</source>
            <translation>%1 がカメラ、位置情報、通知などのこのデバイスの機能の使用を求めています。許可しますか?</translation>
        </message>
    </context>
    <context>
        <name>zelkam::WebViewController</name>
        <message>
            <source>The server answered with the status %1.</source>
            <translation>サーバはステータス %1 を返しました。</translation>
        </message>
        <message>
            <source>This page cannot be shown</source>
            <translation>このページを表示できません</translation>
        </message>
        <message>
            <source>The file could not be read.</source>
            <translation>ファイルを読み取れませんでした。</translation>
        </message>
        <message>
            <source>%1 could not be reached, or did not give the page.</source>
            <translation>%1 に接続できないか、ページが返されませんでした。</translation>
        </message>
        <message>
            <source>This page has stopped</source>
            <translation>このページは停止しました</translation>
        </message>
        <message>
            <source>Something went wrong while the page was shown.</source>
            <translation>ページの表示中に問題が発生しました。</translation>
        </message>
    </context>
</TS>
