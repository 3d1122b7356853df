// The demo's cards: what each one calls, and the replies that it is meant to get. The unattended
// tour plays the cards in this order and compares.
//
//   expect  the statuses of all replies, "success" for a success
//   screen  "preview" when the call ends with a screen that has to be closed
//   share   the tour opens the share sheet on the way
//   before  something that the page does first
//   answer  what the tour picks: names of demo files, "photo" for one that the camera takes, or
//           "cancel"
//   photos  the files lie in the photo library

const icons = {
    image: 'M4 5h16v14H4zM4 16l5-5 4 4 3-3 4 4M15.5 9.5h.01',
    document: 'M7 3h7l5 5v13H7zM14 3v5h5M10 13h6M10 17h6',
    bell: 'M6 16V11a6 6 0 0 1 12 0v5l2 2H4zM10 21h4',
    box: 'M4 8l8-4 8 4v8l-8 4-8-4zM4 8l8 4 8-4M12 12v8',
    send: 'M12 19V5M6 11l6-6 6 6M5 21h14',
    stack: 'M8 8h12v12H8zM4 16V4h12',
    code: 'M9 7l-5 5 5 5M15 7l5 5-5 5',
    tag: 'M4 4h8l8 8-8 8-8-8zM8.5 8.5h.01',
    key: 'M14 10a4 4 0 1 0-3.5 4L13 12h2v-2h2V8h3V5h-3z',
    alert: 'M12 4l9 16H3zM12 10v4M12 17h.01',
    camera: 'M4 8h4l2-3h4l2 3h4v11H4zM12 16a3.2 3.2 0 1 0-.01 0',
    clock: 'M12 3a9 9 0 1 0 .01 0M12 7v5l3 2',
};

const download = (card) => ({
    command: 'fileDownload', button: 'Download', icon: 'document', expect: ['success'], ...card,
});
const pick = (card) => ({
    command: 'filePicker', button: 'Pick', icon: 'document', expect: ['success'], ...card,
});

const photo = (card) => ({
    command: 'imagePicker', button: 'Pick', icon: 'image', expect: ['success'], photos: true,
    ...card,
});

export const sections = [
    {
        title: 'Download and show',
        lead: 'The file is fetched by the application, kept in its Download folder and shown.',
        cards: [
            download({
                title: 'An image',
                about: 'Shown when it has arrived. Done closes it.',
                icon: 'image',
                args: { url: '/files/coast.jpg' },
                screen: 'preview',
            }),
            download({
                title: 'A PDF, to share',
                about: 'With a Share button: open with, save a copy, e-mail.',
                args: { url: 'files/report.pdf', share: true },
                screen: 'preview',
                share: true,
            }),
            download({
                title: 'A text with its own name',
                about: 'The page chooses the name under which it is kept.',
                icon: 'tag',
                args: { url: '/files/notes.txt', fileName: 'Notes of the crossing.txt' },
                screen: 'preview',
            }),
            download({
                title: 'A kind nobody knows',
                about: 'The preview shows name, kind and size.',
                icon: 'box',
                args: { url: '/files/soundings.zkd', progress: false },
                screen: 'preview',
            }),
        ],
    },
    {
        title: 'Download quietly',
        lead: 'Without a screen: a note at the bottom, or the photo album.',
        cards: [
            download({
                title: 'Just a note',
                about: 'A message tells the file’s name when it is there.',
                icon: 'bell',
                args: { url: '/files/notes.txt', open: false, notify: true },
            }),
            download({
                title: 'Into the photo album',
                about: 'A copy of the image goes to the album.',
                icon: 'image',
                args: { url: '/files/coast.jpg', open: false, saveAlbum: true },
            }),
        ],
    },
    {
        title: 'Send something along',
        lead: 'A request can carry data, headers and the session’s cookies.',
        cards: [
            download({
                title: 'Data as JSON',
                about: 'The server makes a file of what it was sent.',
                icon: 'send',
                args: {
                    url: '/orders/receipt',
                    requestType: 'post',
                    data: { item: 'Sea chart 42', copies: 2, express: true },
                },
                screen: 'preview',
            }),
            download({
                title: 'Data as a form',
                about: 'The same, in the way of a web form.',
                icon: 'send',
                args: {
                    url: '/orders/receipt',
                    requestType: 'post',
                    dataType: 'application/x-www-form-urlencoded',
                    data: { item: 'Sea chart 42', copies: '2' },
                },
                screen: 'preview',
            }),
            download({
                title: 'Extra headers',
                about: 'The server answers in the language it is asked for.',
                icon: 'tag',
                args: { url: '/greeting', httpHeaders: { 'X-Greeting-Language': 'fr' } },
                screen: 'preview',
            }),
            download({
                title: 'Cookies',
                about: 'Those of the page and of the server go along, hidden ones included.',
                icon: 'key',
                before: 'cookies',
                args: { url: '/cookies/list', fileName: 'cookies.txt' },
                screen: 'preview',
            }),
        ],
    },
    {
        title: 'Pick documents',
        lead: 'The person chooses; the page gets copies, as addresses that it can load or as content.',
        cards: [
            pick({
                title: 'One document',
                about: 'Of any kind. The page loads it from the address that it gets.',
                args: { extension: '', multiselect: false, maxcount: 1, type: 1 },
                answer: 'report.pdf',
            }),
            pick({
                title: 'An image',
                about: 'Other kinds are dimmed. The address goes straight into an image.',
                icon: 'image',
                args: { extension: 'jpg,png,gif,svg', multiselect: false, maxcount: 1, type: 1 },
                answer: 'coast.jpg',
            }),
            pick({
                title: 'Several documents',
                about: 'As many as the person likes, from any folders.',
                icon: 'stack',
                args: { extension: '', multiselect: true, maxcount: 9, type: 1 },
                answer: 'notes.txt coast.jpg soundings.zkd',
            }),
            pick({
                title: 'With their content',
                about: 'Each as a data URL with its name; nothing is left to load.',
                icon: 'code',
                args: { extension: '', multiselect: true, maxcount: 9, type: 0 },
                answer: 'coast.jpg notes.txt',
            }),
            pick({
                title: 'Nothing, after all',
                about: 'A cancel is a success without data.',
                args: { extension: 'pdf', multiselect: false, maxcount: 1, type: 1 },
                answer: 'cancel',
            }),
        ],
    },
    {
        title: 'Take and pick photos',
        lead: 'From the library or the camera; each comes as a data URL, upright and without a place.',
        cards: [
            photo({
                title: 'One photo',
                about: 'A tap in the library chooses it.',
                args: {},
                answer: 'coast.jpg',
            }),
            photo({
                title: 'The camera',
                about: 'Take one, look at it, use it or take another.',
                icon: 'camera',
                button: 'Open',
                args: { camera: true },
                answer: 'photo',
            }),
            photo({
                title: 'Several photos',
                about: 'Up to three, in the order in which they were tapped.',
                icon: 'stack',
                args: { multiselect: true, maxcount: 3, camera: true },
                answer: 'night.png coast.jpg dunes.jpg',
            }),
            photo({
                title: 'Several, made smaller',
                about: 'Each is scaled while it is decoded, and encoded as asked.',
                icon: 'stack',
                args: {
                    multiselect: true, resizeWidth: 320, resizeHeight: 240, resizeQuality: 0.8,
                },
                answer: 'coast.jpg dunes.jpg',
            }),
            photo({
                title: 'None, after all',
                about: 'A cancel is an error with a status of its own.',
                args: { multiselect: true },
                answer: 'cancel',
                expect: ['2045'],
            }),
        ],
    },
    {
        title: 'When something goes wrong',
        lead: 'Every call gets an answer that says what happened.',
        cards: [
            download({
                title: 'No such file',
                about: 'The server has nothing under this address.',
                icon: 'alert',
                args: { url: '/files/gone.pdf' },
                expect: ['2043'],
            }),
            download({
                title: 'No such file, by POST',
                about: 'This message carries the server’s status.',
                icon: 'alert',
                args: { url: '/files/gone.pdf', requestType: 'post' },
                expect: ['2044'],
            }),
            download({
                title: 'A broken answer',
                about: 'The connection ends in the middle; no half file is kept.',
                icon: 'alert',
                args: { url: '/broken' },
                expect: ['NETWORK_RESPONSE_ERROR'],
            }),
            download({
                title: 'A document for the album',
                about: 'Only images can go there: two steps report it.',
                icon: 'alert',
                args: { url: '/files/report.pdf', saveAlbum: true },
                expect: ['INVALID_PARAM', 'INVALID_PARAM'],
            }),
            download({
                title: 'No address',
                about: 'A download needs to know from where.',
                icon: 'alert',
                args: { fileName: 'nothing.pdf' },
                expect: ['INVALID_PARAM'],
            }),
            pick({
                title: 'Options left out',
                about: 'A picker wants to know what and how many.',
                icon: 'alert',
                args: { extension: 'pdf' },
                expect: ['INVALID_PARAM'],
            }),
            download({
                title: 'A slow server',
                about: 'The mark at the top turns as long as the network is in use.',
                icon: 'clock',
                args: { url: '/slow', open: false, notify: true },
            }),
        ],
    },
];

export function iconPath(name) {
    return icons[name];
}
