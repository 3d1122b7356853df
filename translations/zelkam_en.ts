<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
    <context>
        <name>DocumentPicker</name>
        <message>
            <source>Selected</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>This kind cannot be chosen here</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>You may not open this</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Not a document</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>DocumentPlaces</name>
        <message>
            <source>Home</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Documents</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Downloads</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Pictures</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Music</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Videos</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Desktop</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>This device</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>FileName</name>
        <message>
            <source>(unnamed)</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>FileSaving</name>
        <message>
            <source>Enter a name.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>A name cannot contain a slash.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>This name is not possible here.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>This name is too long.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>This name is taken already.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>You may not save in this folder.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>This folder is no longer there.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>There is not enough room left.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The file is too large for this drive.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>It could not be saved.</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>ToastActivityView</name>
        <message>
            <source>In progress</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>UIActivityViewController</name>
        <message>
            <source>The file cannot be read.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Open in Another App</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Save a Copy</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Copy File</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Send by E-Mail</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Show in Folder</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>No application could open the file.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>No e-mail application could be started.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The folder could not be opened.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Saved to “%1”</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Copied</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>URLError</name>
        <message>
            <source>The download was cancelled.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The address or a header of the request is not valid.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>This kind of address is not supported.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The request timed out.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>There is no network connection.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The server could not be found.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Could not connect to the proxy server.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Could not connect to the server.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The network connection was lost.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The server sent only a part of the file.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>A secure connection to the server could not be made.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The certificate of the server is not trusted.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The server redirected the request too often.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The server redirected the request to an address that is not supported.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The server redirected the request to a place that is not allowed.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The server sent an answer that is not valid.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The server sent an answer that is too large.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The data from the server is damaged.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The file could not be made.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The file could not be written.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>There is not enough space for the file.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The download failed.</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam.mobile.ZelkamMobileContents</name>
        <message>
            <source>FILE_DOWNLOAD_TOAST_MESSAGE</source>
            <translation>has been downloaded.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::CameraView</name>
        <message>
            <source>Switch camera</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Cancel</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Retake</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Use photo</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>No camera found</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Connect a camera and try again.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The camera cannot be used</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::DocumentBrowser</name>
        <message numerus="yes">
            <source>%Ln item(s) so far</source>
            <translation>
                <numerusform>%Ln item so far</numerusform>
                <numerusform>%Ln items so far</numerusform>
            </translation>
        </message>
        <message>
            <source>Documents</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Folder above</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>It is no longer there.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>No name in this folder contains “%1”.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Nothing found</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Places</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Reading the folder…</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>This folder cannot be opened</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>This folder is empty</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>You do not have the permission.</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::DocumentPickerView</name>
        <message>
            <source>Clear</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Open</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Choose documents</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Choose a document</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Nothing selected</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Choose one document</source>
            <translation type="unfinished" />
        </message>
        <message numerus="yes">
            <source>%Ln selected</source>
            <translation>
                <numerusform>%Ln selected</numerusform>
                <numerusform>%Ln selected</numerusform>
            </translation>
        </message>
        <message>
            <source>Opening…</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::DocumentPlacesList</name>
        <message>
            <source>Places</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::DocumentSaveView</name>
        <message>
            <source>Save a Copy</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Name</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Save</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Saving…</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::ImageGridPickerController</name>
        <message numerus="yes">
            <source>You can select up to %Ln photo(s).</source>
            <translation>
                <numerusform>You can select up to %Ln photo.</numerusform>
                <numerusform>You can select up to %Ln photos.</numerusform>
            </translation>
        </message>
        <message>
            <source>The photo could not be saved.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>%1 of %2 selected</source>
            <translation type="unfinished" />
        </message>
        <message numerus="yes">
            <source>%Ln selected</source>
            <translation>
                <numerusform>%Ln selected</numerusform>
                <numerusform>%Ln selected</numerusform>
            </translation>
        </message>
        <message>
            <source>Select photos</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::LoadingView</name>
        <message>
            <source>Loading</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::MediaView</name>
        <message>
            <source>Position</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The file cannot be played on this device.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Pause</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Play</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::MessageScreen</name>
        <message>
            <source>Try Again</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::NewFolderRow</name>
        <message>
            <source>New Folder</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Create</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::PhotoGridView</name>
        <message>
            <source>Photos</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Take a photo</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>%1, selected as number %2</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Take photo</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::PhotoLibraryView</name>
        <message>
            <source>Photos</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>There is no pictures folder</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>It is missing, or cannot be read.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>No photos yet</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Pictures in your pictures folder appear here.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Looking for photos…</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::PickerSearchField</name>
        <message>
            <source>Search in this folder</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::PictureCamera</name>
        <message>
            <source>The picture for the camera cannot be read.</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::QLPreviewController</name>
        <message>
            <source>The file is not there any more.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The file cannot be read.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>This is not a file that can be shown.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The image is too large to be shown.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The image is damaged or of a kind that cannot be shown.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The document is protected by a password.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The document is damaged and cannot be shown.</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::SaveCopyViewController</name>
        <message>
            <source>Already in this folder</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Replace</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::ShareSheet</name>
        <message>
            <source>Cancel</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::ShutterButton</name>
        <message>
            <source>Take photo</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::StatusBar</name>
        <message>
            <source>The network is in use</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::TextView</name>
        <message>
            <source>Only the beginning of this file is shown.</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::UIActivityViewController</name>
        <message numerus="yes">
            <source>%n file(s)</source>
            <translation>
                <numerusform>%n file</numerusform>
                <numerusform>%n files</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>zelkam::UIBarButtonItem</name>
        <message>
            <source>Done</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Cancel</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Add</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Share</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Delete</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::UINavigationController</name>
        <message>
            <source>Back</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::WebPage</name>
        <message>
            <source>Permission</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>%1 asks for the use of a function of this device, such as the camera, the position or notifications. Allow it?</source>
            <translation type="unfinished" />
        </message>
    </context>
    <context>
        <name>zelkam::WebViewController</name>
        <message>
            <source>The server answered with the status %1.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>This page cannot be shown</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>The file could not be read.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>%1 could not be reached, or did not give the page.</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>This page has stopped</source>
            <translation type="unfinished" />
        </message>
        <message>
            <source>Something went wrong while the page was shown.</source>
            <translation type="unfinished" />
        </message>
    </context>
</TS>
