// The application's commands as functions. Types: zelkam-mobile.d.ts.

/** Whether the page is open in the application. */
export function isAvailable() {
    return typeof window.ZelkamMobile === 'object';
}

function exec(command, options) {
    if (isAvailable()) return window.ZelkamMobile.exec(command, options);
    const error = new Error('This page is not open in the application.');
    error.status = 'COMMAND_NOT_FOUND';
    return Promise.reject(error);
}

/** Downloads a file and, unless it is told otherwise, shows it. */
export function fileDownload(options) {
    return exec('fileDownload', options);
}

/**
 * Lets the person pick documents; nothing when they cancel. What is not given is filled in: one
 * document of any kind, as an address.
 */
export function filePicker(options = {}) {
    return exec('filePicker', { extension: '', multiselect: false, maxcount: 1, type: 1, ...options });
}

/** Lets the person take or pick images; rejects when they cancel. */
export function imagePicker(options = {}) {
    return exec('imagePicker', options);
}
