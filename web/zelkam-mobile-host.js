// The page side of the host's bridge. The host puts this text, behind the web channel's client,
// into one closure and runs it in the main frame before any script of the page.
//
// Calls go through the web channel. Replies are fetched from the host's own scheme, because that
// is fast for large ones and because the web engine itself tells the host which origin fetches:
// a reply can never end in a document that it was not meant for. The channel only says that
// there is something to fetch.
'use strict';

const transport = window.qt && window.qt.webChannelTransport;
if (!transport || window.ZelkamMobile) return;

// What a page changes in the built-in objects later is not used here.
const { parse, stringify } = JSON;
const { freeze, defineProperty } = Object;
const { isFinite: finite } = Number;
const PagePromise = Promise;
const PageError = Error;
const Request = XMLHttpRequest;
const isArray = Array.isArray;
const later = window.setTimeout.bind(window);

const bridgeAddress = 'zelkam://bridge/';
const tag = Array.from(crypto.getRandomValues(new Uint32Array(4)), (n) => n.toString(36)).join('-');

const entries = Object.create(null); // what to do with a reply, by the number of its call
let lastNumber = 0;
let host = null; // the channel's object
let token = null; // names this document's session
let refused = false;
let asked = false;
let queued = []; // what waits for the answer about a session
let fetching = false;
let fetchAgain = false;

function read(address, done) {
    const request = new Request();
    request.open('GET', bridgeAddress + address);
    request.onloadend = () => done(request.status === 200 ? request.responseText : null);
    request.send();
}

function failure(status, code, message) {
    return { success: false, status, code, message, keepCallback: false };
}

function notAllowed() {
    return failure('ORIGIN_NOT_ALLOWED', 1902, 'This page may not call the application.');
}

function deliver(number, reply) {
    const onReply = entries[number];
    if (!onReply) return;
    try {
        onReply(reply);
    } catch (error) {
        // The page's own fault is shown as such, and the next reply is still delivered.
        later(() => { throw error; });
    }
}

function end(number, reply) {
    deliver(number, reply);
    delete entries[number];
}

// Puts the long texts, which lie behind the line of JSON or are fetched one by one, back into their
// places.
function unpack(body, kept) {
    const lineEnd = body.indexOf('\n');
    const line = body.slice(0, lineEnd);
    const { texts } = parse(line);
    if (texts.length === 0 && kept.length === 0) return parse(line).replies;
    let offset = lineEnd + 1;
    const slices = [];
    for (let i = 0; i < texts.length; i += 1) {
        slices[i] = body.substring(offset, offset + texts[i]);
        offset += texts[i];
    }
    return parse(line, (key, value) => {
        if (!value || typeof value !== 'object' || !(token in value)) return value;
        const place = value[token];
        return isArray(place) ? kept[place[0]] : slices[place];
    }).replies;
}

// The longest texts come one after another, each in parts at the same time, which is faster than in
// one piece. A text of which a part is missing is null.
function fetchKept(count, parts, done, kept = []) {
    const index = kept.length;
    if (index === count) {
        done(kept);
        return;
    }
    const pieces = [];
    let missing = parts;
    for (let i = 0; i < parts; i += 1) {
        read(`replies/${token}/${index}/${i}`, (piece) => {
            pieces[i] = piece;
            missing -= 1;
            if (missing > 0) return;
            let text = '';
            for (let k = 0; k < parts && text !== null; k += 1) {
                text = pieces[k] === null ? null : text + pieces[k];
            }
            kept[index] = text;
            fetchKept(count, parts, done, kept);
        });
    }
}

function endFetch(replies) {
    fetching = false;
    for (let i = 0; i < replies.length; i += 1) {
        const { call, reply } = replies[i];
        if (reply) deliver(call, reply);
        else delete entries[call];
    }
    if (fetchAgain) fetchReplies();
}

function fetchReplies() {
    if (token === null) return;
    if (fetching) {
        fetchAgain = true;
        return;
    }
    fetching = true;
    fetchAgain = false;
    read(`replies/${token}`, (body) => {
        if (body === null) {
            endFetch([]);
            return;
        }
        const { kept, parts } = parse(body.slice(0, body.indexOf('\n')));
        fetchKept(kept, parts, (texts) => endFetch(unpack(body, texts)));
    });
}

// Does something with the session, or without one when this page gets none.
function withSession(action) {
    if (refused || token !== null) {
        action();
        return;
    }
    queued[queued.length] = action;
    openSession();
}

function openSession() {
    if (asked || host === null) return;
    asked = true;
    read('session', (answer) => {
        token = answer;
        refused = answer === null;
        const actions = queued;
        queued = [];
        for (let i = 0; i < actions.length; i += 1) actions[i]();
    });
}

// A list of one value, because JSON has no form for a missing one. Numbers that JSON has no form
// for travel under the tag, which no value of the page can carry.
function serialise(args) {
    return stringify([args], (key, value) => {
        if (typeof value === 'number' && !finite(value)) return { [tag]: `${value}` };
        if (typeof value === 'bigint') return { [tag]: `${value}n` };
        return value;
    });
}

function start(command, args, onReply) {
    lastNumber += 1;
    const number = lastNumber;
    entries[number] = onReply;
    // Always later, so that a page meets one order only.
    const reject = (reply) => later(() => end(number, reply));
    if (typeof command !== 'string') {
        reject(failure('COMMAND_NOT_FOUND', 1901, 'The name of a command is a text.'));
        return;
    }
    let text;
    try {
        text = serialise(args);
    } catch (error) {
        reject(failure('INVALID_PARAM', 1001, `The arguments cannot be sent: ${error && error.message}`));
        return;
    }
    withSession(() => {
        if (refused) reject(notAllowed());
        else host.call(token, number, command, text, tag);
    });
}

function call(command, args, onReply) {
    if (typeof onReply !== 'function') throw new TypeError('call() needs a function for the replies.');
    start(command, args, onReply);
}

function exec(command, args) {
    return new PagePromise((resolve, reject) => {
        start(command, args, (reply) => {
            if (reply.success) {
                resolve(reply.data);
                return;
            }
            const error = new PageError(reply.message === undefined ? reply.status : reply.message);
            error.status = reply.status;
            error.code = reply.code;
            reject(error);
        });
    });
}

let client = null; // the web channel's own script
let connected = false;

const port = {
    send: (message) => transport.send(message),
    onmessage: null,
};

// What the host sent to the last document may reach this one. The client cannot cope with an answer
// to nothing it asked, nor with a signal before it knows the host.
function receive(message) {
    const data = typeof message.data === 'string' ? parse(message.data) : message.data;
    if ('id' in data ? data.id in client.execCallbacks : connected) port.onmessage({ data });
}

// The web engine hands each message to what it finds under this name, so it has to stay.
defineProperty(window, 'qt', {
    value: freeze({ webChannelTransport: freeze({ onmessage: receive }) }),
    enumerable: false,
    writable: false,
    configurable: false,
});

client = new QWebChannel(port, (channel) => {
    const object = channel.objects.host;
    object.repliesWait.connect(fetchReplies);
    connected = true;
    // A session that is asked for before the host knows of this document would end with the
    // sessions of the last one.
    object.begin(() => {
        host = object;
        if (queued.length > 0) openSession();
    });
});
// The first question, which is behind us, has the same answer in every document. The answers to all
// others are told apart from those that the last document left by numbers of this document's own.
client.execId = crypto.getRandomValues(new Uint32Array(1))[0] + 1;

// A browser lets a script close only what a script has opened, or what has shown one page. Here it
// ends the application, however many pages it has shown.
const closeWindow = window.close.bind(window);
window.close = function close() {
    withSession(() => {
        if (refused) closeWindow();
        else host.close(token);
    });
};

defineProperty(window, 'ZelkamMobile', {
    value: freeze({ exec: freeze(exec), call: freeze(call) }),
    enumerable: true,
    writable: false,
    configurable: false,
});
