<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
    <context>
        <name>DocumentPicker</name>
        <message>
            <source>Selected</source>
            <translation>Seleccionado</translation>
        </message>
        <message>
            <source>This kind cannot be chosen here</source>
            <translation>Este tipo no se puede elegir aquí</translation>
        </message>
        <message>
            <source>You may not open this</source>
            <translation>No tiene permiso para abrirlo</translation>
        </message>
        <message>
            <source>Not a document</source>
            <translation>No es un documento</translation>
        </message>
    </context>
    <context>
        <name>DocumentPlaces</name>
        <message>
            <source>Home</source>
            <translation>Carpeta personal</translation>
        </message>
        <message>
            <source>Documents</source>
            <translation>Documentos</translation>
        </message>
        <message>
            <source>Downloads</source>
            <translation>Descargas</translation>
        </message>
        <message>
            <source>Pictures</source>
            <translation>Imágenes</translation>
        </message>
        <message>
            <source>Music</source>
            <translation>Música</translation>
        </message>
        <message>
            <source>Videos</source>
            <translation>Vídeos</translation>
        </message>
        <message>
            <source>Desktop</source>
            <translation>Escritorio</translation>
        </message>
        <message>
            <source>This device</source>
            <translation>Este dispositivo</translation>
        </message>
    </context>
    <context>
        <name>FileName</name>
        <message>
            <source>(unnamed)</source>
            <translation>(sin nombre)</translation>
        </message>
    </context>
    <context>
        <name>FileSaving</name>
        <message>
            <source>Enter a name.</source>
            <translation>Escriba un nombre.</translation>
        </message>
        <message>
            <source>A name cannot contain a slash.</source>
            <translation>Un nombre no puede contener una barra.</translation>
        </message>
        <message>
            <source>This name is not possible here.</source>
            <translation>Este nombre no es posible aquí.</translation>
        </message>
        <message>
            <source>This name is too long.</source>
            <translation>Este nombre es demasiado largo.</translation>
        </message>
        <message>
            <source>This name is taken already.</source>
            <translation>Este nombre ya está en uso.</translation>
        </message>
        <message>
            <source>You may not save in this folder.</source>
            <translation>No puede guardar en esta carpeta.</translation>
        </message>
        <message>
            <source>This folder is no longer there.</source>
            <translation>Esta carpeta ya no existe.</translation>
        </message>
        <message>
            <source>There is not enough room left.</source>
            <translation>No queda espacio suficiente.</translation>
        </message>
        <message>
            <source>The file is too large for this drive.</source>
            <translation>El archivo es demasiado grande para esta unidad.</translation>
        </message>
        <message>
            <source>It could not be saved.</source>
            <translation>No se ha podido guardar.</translation>
        </message>
    </context>
    <context>
        <name>ToastActivityView</name>
        <message>
            <source>In progress</source>
            <translation>En curso</translation>
        </message>
    </context>
    <context>
        <name>UIActivityViewController</name>
        <message>
            <source>The file cannot be read.</source>
            <translation>No se puede leer el archivo.</translation>
        </message>
        <message>
            <source>Open in Another App</source>
            <translation>Abrir en otra aplicación</translation>
        </message>
        <message>
            <source>Save a Copy</source>
            <translation>Guardar una copia</translation>
        </message>
        <message>
            <source>Copy File</source>
            <translation>Copiar el archivo</translation>
        </message>
        <message>
            <source>Send by E-Mail</source>
            <translation>Enviar por correo</translation>
        </message>
        <message>
            <source>Show in Folder</source>
            <translation>Mostrar en la carpeta</translation>
        </message>
        <message>
            <source>No application could open the file.</source>
            <translation>Ninguna aplicación ha podido abrir el archivo.</translation>
        </message>
        <message>
            <source>No e-mail application could be started.</source>
            <translation>No se ha podido iniciar ninguna aplicación de correo.</translation>
        </message>
        <message>
            <source>The folder could not be opened.</source>
            <translation>No se ha podido abrir la carpeta.</translation>
        </message>
        <message>
            <source>Saved to “%1”</source>
            <translation>Guardado en «%1»</translation>
        </message>
        <message>
            <source>Copied</source>
            <translation>Copiado</translation>
        </message>
    </context>
    <context>
        <name>URLError</name>
        <message>
            <source>The download was cancelled.</source>
            <translation>La descarga se ha cancelado.</translation>
        </message>
        <message>
            <source>The address or a header of the request is not valid.</source>
            <translation>La dirección o una cabecera de la solicitud no es válida.</translation>
        </message>
        <message>
            <source>This kind of address is not supported.</source>
            <translation>Este tipo de dirección no es compatible.</translation>
        </message>
        <message>
            <source>The request timed out.</source>
            <translation>Se ha agotado el tiempo de espera de la solicitud.</translation>
        </message>
        <message>
            <source>There is no network connection.</source>
            <translation>No hay conexión de red.</translation>
        </message>
        <message>
            <source>The server could not be found.</source>
            <translation>No se ha encontrado el servidor.</translation>
        </message>
        <message>
            <source>Could not connect to the proxy server.</source>
            <translation>No se ha podido conectar con el servidor proxy.</translation>
        </message>
        <message>
            <source>Could not connect to the server.</source>
            <translation>No se ha podido conectar con el servidor.</translation>
        </message>
        <message>
            <source>The network connection was lost.</source>
            <translation>Se ha perdido la conexión de red.</translation>
        </message>
        <message>
            <source>The server sent only a part of the file.</source>
            <translation>El servidor solo ha enviado una parte del archivo.</translation>
        </message>
        <message>
            <source>A secure connection to the server could not be made.</source>
            <translation>No se ha podido establecer una conexión segura con el servidor.</translation>
        </message>
        <message>
            <source>The certificate of the server is not trusted.</source>
            <translation>El certificado del servidor no es de confianza.</translation>
        </message>
        <message>
            <source>The server redirected the request too often.</source>
            <translation>El servidor ha redirigido la solicitud demasiadas veces.</translation>
        </message>
        <message>
            <source>The server redirected the request to an address that is not supported.</source>
            <translation>El servidor ha redirigido la solicitud a una dirección no compatible.</translation>
        </message>
        <message>
            <source>The server redirected the request to a place that is not allowed.</source>
            <translation>El servidor ha redirigido la solicitud a un lugar que no está permitido.</translation>
        </message>
        <message>
            <source>The server sent an answer that is not valid.</source>
            <translation>El servidor ha enviado una respuesta no válida.</translation>
        </message>
        <message>
            <source>The server sent an answer that is too large.</source>
            <translation>El servidor ha enviado una respuesta demasiado grande.</translation>
        </message>
        <message>
            <source>The data from the server is damaged.</source>
            <translation>Los datos del servidor están dañados.</translation>
        </message>
        <message>
            <source>The file could not be made.</source>
            <translation>No se ha podido crear el archivo.</translation>
        </message>
        <message>
            <source>The file could not be written.</source>
            <translation>No se ha podido escribir el archivo.</translation>
        </message>
        <message>
            <source>There is not enough space for the file.</source>
            <translation>No hay espacio suficiente para el archivo.</translation>
        </message>
        <message>
            <source>The download failed.</source>
            <translation>La descarga ha fallado.</translation>
        </message>
    </context>
    <context>
        <name>zelkam.mobile.ZelkamMobileContents</name>
        <message>
            <source>FILE_DOWNLOAD_TOAST_MESSAGE</source>
            <translation>se ha descargado.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::CameraView</name>
        <message>
            <source>Switch camera</source>
            <translation>Cambiar de cámara</translation>
        </message>
        <message>
            <source>Cancel</source>
            <translation>Cancelar</translation>
        </message>
        <message>
            <source>Retake</source>
            <translation>Repetir</translation>
        </message>
        <message>
            <source>Use photo</source>
            <translation>Usar la foto</translation>
        </message>
        <message>
            <source>No camera found</source>
            <translation>No se ha encontrado ninguna cámara</translation>
        </message>
        <message>
            <source>Connect a camera and try again.</source>
            <translation>Conecte una cámara e inténtelo de nuevo.</translation>
        </message>
        <message>
            <source>The camera cannot be used</source>
            <translation>No se puede usar la cámara</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentBrowser</name>
        <message numerus="yes">
            <source>%Ln item(s) so far</source>
            <translation>
                <numerusform>%Ln elemento hasta ahora</numerusform>
                <numerusform>%Ln elementos hasta ahora</numerusform>
            </translation>
        </message>
        <message>
            <source>Documents</source>
            <translation>Documentos</translation>
        </message>
        <message>
            <source>Folder above</source>
            <translation>Carpeta superior</translation>
        </message>
        <message>
            <source>It is no longer there.</source>
            <translation>Ya no existe.</translation>
        </message>
        <message>
            <source>No name in this folder contains “%1”.</source>
            <translation>Ningún nombre de esta carpeta contiene «%1».</translation>
        </message>
        <message>
            <source>Nothing found</source>
            <translation>No se ha encontrado nada</translation>
        </message>
        <message>
            <source>Places</source>
            <translation>Lugares</translation>
        </message>
        <message>
            <source>Reading the folder…</source>
            <translation>Leyendo la carpeta…</translation>
        </message>
        <message>
            <source>This folder cannot be opened</source>
            <translation>No se puede abrir esta carpeta</translation>
        </message>
        <message>
            <source>This folder is empty</source>
            <translation>Esta carpeta está vacía</translation>
        </message>
        <message>
            <source>You do not have the permission.</source>
            <translation>No tiene permiso.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentPickerView</name>
        <message>
            <source>Clear</source>
            <translation>Desmarcar</translation>
        </message>
        <message>
            <source>Open</source>
            <translation>Abrir</translation>
        </message>
        <message>
            <source>Choose documents</source>
            <translation>Elegir documentos</translation>
        </message>
        <message>
            <source>Choose a document</source>
            <translation>Elegir un documento</translation>
        </message>
        <message>
            <source>Nothing selected</source>
            <translation>Nada seleccionado</translation>
        </message>
        <message>
            <source>Choose one document</source>
            <translation>Elija un documento</translation>
        </message>
        <message numerus="yes">
            <source>%Ln selected</source>
            <translation>
                <numerusform>%Ln seleccionado</numerusform>
                <numerusform>%Ln seleccionados</numerusform>
            </translation>
        </message>
        <message>
            <source>Opening…</source>
            <translation>Abriendo…</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentPlacesList</name>
        <message>
            <source>Places</source>
            <translation>Lugares</translation>
        </message>
    </context>
    <context>
        <name>zelkam::DocumentSaveView</name>
        <message>
            <source>Save a Copy</source>
            <translation>Guardar una copia</translation>
        </message>
        <message>
            <source>Name</source>
            <translation>Nombre</translation>
        </message>
        <message>
            <source>Save</source>
            <translation>Guardar</translation>
        </message>
        <message>
            <source>Saving…</source>
            <translation>Guardando…</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ImageGridPickerController</name>
        <message numerus="yes">
            <source>You can select up to %Ln photo(s).</source>
            <translation>
                <numerusform>Puede seleccionar hasta %Ln foto.</numerusform>
                <numerusform>Puede seleccionar hasta %Ln fotos.</numerusform>
            </translation>
        </message>
        <message>
            <source>The photo could not be saved.</source>
            <translation>No se ha podido guardar la foto.</translation>
        </message>
        <message>
            <source>%1 of %2 selected</source>
            <translation>%1 de %2</translation>
        </message>
        <message numerus="yes">
            <source>%Ln selected</source>
            <translation>
                <numerusform>%Ln seleccionado</numerusform>
                <numerusform>%Ln seleccionados</numerusform>
            </translation>
        </message>
        <message>
            <source>Select photos</source>
            <translation>Elegir fotos</translation>
        </message>
    </context>
    <context>
        <name>zelkam::LoadingView</name>
        <message>
            <source>Loading</source>
            <translation>Cargando</translation>
        </message>
    </context>
    <context>
        <name>zelkam::MediaView</name>
        <message>
            <source>Position</source>
            <translation>Posición</translation>
        </message>
        <message>
            <source>The file cannot be played on this device.</source>
            <translation>El archivo no se puede reproducir en este dispositivo.</translation>
        </message>
        <message>
            <source>Pause</source>
            <translation>Pausa</translation>
        </message>
        <message>
            <source>Play</source>
            <translation>Reproducir</translation>
        </message>
    </context>
    <context>
        <name>zelkam::MessageScreen</name>
        <message>
            <source>Try Again</source>
            <translation>Intentar de nuevo</translation>
        </message>
    </context>
    <context>
        <name>zelkam::NewFolderRow</name>
        <message>
            <source>New Folder</source>
            <translation>Nueva carpeta</translation>
        </message>
        <message>
            <source>Create</source>
            <translation>Crear</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PhotoGridView</name>
        <message>
            <source>Photos</source>
            <translation>Fotos</translation>
        </message>
        <message>
            <source>Take a photo</source>
            <translation>Hacer una foto</translation>
        </message>
        <message>
            <source>%1, selected as number %2</source>
            <translation>%1, seleccionada con el número %2</translation>
        </message>
        <message>
            <source>Take photo</source>
            <translation>Hacer foto</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PhotoLibraryView</name>
        <message>
            <source>Photos</source>
            <translation>Fotos</translation>
        </message>
        <message>
            <source>There is no pictures folder</source>
            <translation>No hay carpeta de imágenes</translation>
        </message>
        <message>
            <source>It is missing, or cannot be read.</source>
            <translation>Falta o no se puede leer.</translation>
        </message>
        <message>
            <source>No photos yet</source>
            <translation>Todavía no hay fotos</translation>
        </message>
        <message>
            <source>Pictures in your pictures folder appear here.</source>
            <translation>Las imágenes de su carpeta de imágenes aparecen aquí.</translation>
        </message>
        <message>
            <source>Looking for photos…</source>
            <translation>Buscando fotos…</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PickerSearchField</name>
        <message>
            <source>Search in this folder</source>
            <translation>Buscar en esta carpeta</translation>
        </message>
    </context>
    <context>
        <name>zelkam::PictureCamera</name>
        <message>
            <source>The picture for the camera cannot be read.</source>
            <translation>No se puede leer la imagen para la cámara.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::QLPreviewController</name>
        <message>
            <source>The file is not there any more.</source>
            <translation>El archivo ya no existe.</translation>
        </message>
        <message>
            <source>The file cannot be read.</source>
            <translation>No se puede leer el archivo.</translation>
        </message>
        <message>
            <source>This is not a file that can be shown.</source>
            <translation>Este archivo no se puede mostrar.</translation>
        </message>
        <message>
            <source>The image is too large to be shown.</source>
            <translation>La imagen es demasiado grande para mostrarla.</translation>
        </message>
        <message>
            <source>The image is damaged or of a kind that cannot be shown.</source>
            <translation>La imagen está dañada o es de un tipo que no se puede mostrar.</translation>
        </message>
        <message>
            <source>The document is protected by a password.</source>
            <translation>El documento está protegido con una contraseña.</translation>
        </message>
        <message>
            <source>The document is damaged and cannot be shown.</source>
            <translation>El documento está dañado y no se puede mostrar.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::SaveCopyViewController</name>
        <message>
            <source>Already in this folder</source>
            <translation>Ya está en esta carpeta</translation>
        </message>
        <message>
            <source>Replace</source>
            <translation>Reemplazar</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ShareSheet</name>
        <message>
            <source>Cancel</source>
            <translation>Cancelar</translation>
        </message>
    </context>
    <context>
        <name>zelkam::ShutterButton</name>
        <message>
            <source>Take photo</source>
            <translation>Hacer foto</translation>
        </message>
    </context>
    <context>
        <name>zelkam::StatusBar</name>
        <message>
            <source>The network is in use</source>
            <translation>La red está en uso</translation>
        </message>
    </context>
    <context>
        <name>zelkam::TextView</name>
        <message>
            <source>Only the beginning of this file is shown.</source>
            <translation>Solo se muestra el principio de este archivo.</translation>
        </message>
    </context>
    <context>
        <name>zelkam::UIActivityViewController</name>
        <message numerus="yes">
            <source>%n file(s)</source>
            <translation>
                <numerusform>%n archivo</numerusform>
                <numerusform>%n archivos</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>zelkam::UIBarButtonItem</name>
        <message>
            <source>Done</source>
            <translation>OK</translation>
        </message>
        <message>
            <source>Cancel</source>
            <translation>Cancelar</translation>
        </message>
        <message>
            <source>Add</source>
            <translation>Añadir</translation>
        </message>
        <message>
            <source>Share</source>
            <translation>Compartir</translation>
        </message>
        <message>
            <source>Delete</source>
            <translation>Eliminar</translation>
        </message>
    </context>
    <context>
        <name>zelkam::UINavigationController</name>
        <message>
            <source>Back</source>
            <translation>Atrás</translation>
        </message>
    </context>
    <context>
        <name>zelkam::WebPage</name>
        <message>
            <source>Permission</source>
            <translation>Permiso</translation>
        </message>
        <message>
            <source>%1 asks for the use of a function of this device, such as the camera, the position or notifications. Allow it?</source>
            <translation>%1 pide usar una función de este dispositivo, como la cámara, la ubicación o las notificaciones. ¿Permitirlo?</translation>
        </message>
    </context>
    <context>
        <name>zelkam::WebViewController</name>
        <message>
            <source>The server answered with the status %1.</source>
            <translation>El servidor ha respondido con el estado %1.</translation>
        </message>
        <message>
            <source>This page cannot be shown</source>
            <translation>No se puede mostrar esta página</translation>
        </message>
        <message>
            <source>The file could not be read.</source>
            <translation>No se ha podido leer el archivo.</translation>
        </message>
        <message>
            <source>%1 could not be reached, or did not give the page.</source>
            <translation>No se ha podido acceder a %1 o no ha entregado la página.</translation>
        </message>
        <message>
            <source>This page has stopped</source>
            <translation>Esta página se ha detenido</translation>
        </message>
        <message>
            <source>Something went wrong while the page was shown.</source>
            <translation>Se ha producido un problema al mostrar la página.</translation>
        </message>
    </context>
</TS>
