// Types of the application's interface for pages: window.ZelkamMobile, and the wrappers of
// zelkam-mobile.mjs.

/** One reply to a call. */
export type Reply<Data = unknown> = SuccessReply<Data> | ErrorReply;

export interface SuccessReply<Data = unknown> {
    readonly success: true;
    readonly data?: Data;
    /** Whether further replies to this call are meant to follow. */
    readonly keepCallback: boolean;
}

export interface ErrorReply {
    readonly success: false;
    /** What went wrong, as a constant text. */
    readonly status: Status;
    /** The number of the status, where it has one. */
    readonly code?: number;
    /** A sentence, where there is more to say. */
    readonly message?: string;
    readonly keepCallback: boolean;
}

export type Status =
    | 'UNKNOWN'
    | 'INVALID_PARAM'
    | 'FILE_NOT_FOUND'
    | 'NETWORK_RESPONSE_ERROR'
    | 'OBJECT_CREATION_FAILED'
    | 'OBJECT_REFERENCE_FAILED'
    /** The call ended without a reply; as a rule, because a later call took over. */
    | 'NO_REPLY'
    | 'COMMAND_NOT_FOUND'
    | 'ORIGIN_NOT_ALLOWED'
    /** imagePicker: cancelled; an image could not be read; several images, cancelled. */
    | '2041'
    | '2042'
    | '2045'
    /** fileDownload failed, by GET; by POST. */
    | '2043'
    | '2044'
    | (string & {});

/** What a rejected promise of exec() carries. */
export interface CommandError extends Error {
    readonly status: Status;
    readonly code?: number;
}

export interface FileDownloadOptions {
    /** Where from: absolute, or relative to the server of the page. */
    url: string;
    /** The name to keep the file under; otherwise the server's. */
    fileName?: string;
    /** "post" in any case of letters; everything else is GET. */
    requestType?: string;
    /** The type of a POST's body: JSON unless it is "application/x-www-form-urlencoded". */
    dataType?: string;
    /** What a POST sends. In a form, only texts have a value. */
    data?: Record<string, unknown>;
    httpHeaders?: Record<string, string>;
    /** Show the file in a preview; true unless it is false. */
    open?: boolean;
    /** Offer to share it there. */
    share?: boolean;
    /** Tell the person by a short message. */
    notify?: boolean;
    /** Put a copy of an image into the photo album. */
    saveAlbum?: boolean;
    progress?: boolean;
}

export interface FilePickerOptions {
    /** Extensions that may be picked, separated by commas ("pdf,jpg"); all when it is empty. */
    extension: string;
    multiselect: boolean;
    /** Required, and without effect. */
    maxcount: number;
    /** 0: data URLs; 1: addresses. Without it, as in the last call; addresses at first. */
    type?: 0 | 1;
}

/** One picked file, as an address that the page can load. */
export interface PickedFileAddress {
    readonly fileUri: string;
}

/** One picked file as a data URL; in a list, one that could not be read has none. */
export interface PickedFileData {
    readonly data?: string;
    readonly fileName?: string;
}

/** One file, or a list of what several gave: addresses are texts there. Nothing on cancel. */
export type PickedFiles = PickedFileAddress | PickedFileData | PickedFileData[] | string[] | undefined;

export interface ImagePickerOptions {
    multiselect?: boolean;
    /** Take a photo; with multiselect, offer to. */
    camera?: boolean;
    /** The options below act on several images only. */
    maxcount?: number;
    /** In points. */
    resizeWidth?: number;
    resizeHeight?: number;
    /** Of JPEG, 0 to 1. */
    resizeQuality?: number;
}

/** One picked image, as a data URL. */
export interface PickedImage {
    readonly image: string;
}

/** The commands, each with its options and the data of its success. */
export interface Commands {
    fileDownload: { options: FileDownloadOptions; data: undefined };
    filePicker: { options: FilePickerOptions; data: PickedFiles };
    imagePicker: { options: ImagePickerOptions; data: PickedImage | string[] };
}

export interface ZelkamMobile {
    /**
     * Calls a command. The promise settles with the first reply: it resolves with the data of a
     * success, or rejects with a CommandError.
     */
    exec<Name extends keyof Commands>(
        command: Name,
        args: Commands[Name]['options'],
    ): Promise<Commands[Name]['data']>;
    exec(command: string, args?: object): Promise<unknown>;

    /** Calls a command. The function is given every reply, in order. */
    call<Name extends keyof Commands>(
        command: Name,
        args: Commands[Name]['options'],
        onReply: (reply: Reply<Commands[Name]['data']>) => void,
    ): void;
    call(command: string, args: object | undefined, onReply: (reply: Reply) => void): void;
}

declare global {
    interface Window {
        /** There is none in a browser, nor in a frame of a page. */
        readonly ZelkamMobile?: ZelkamMobile;
    }
}

/** Whether the page is open in the application. */
export function isAvailable(): boolean;
/** Downloads a file and, unless it is told otherwise, shows it. */
export function fileDownload(options: FileDownloadOptions): Promise<void>;
/**
 * Lets the person pick documents; nothing when they cancel. What is not given is filled in: one
 * document of any kind, as an address.
 */
export function filePicker(options?: Partial<FilePickerOptions>): Promise<PickedFiles>;
/** Lets the person take or pick images; rejects when they cancel. */
export function imagePicker(options?: ImagePickerOptions): Promise<PickedImage | string[]>;
