// What a picker gave, as a person wants to see it: images as images, texts by their first lines,
// anything else by its name and size.

const imageName = /\.(jpe?g|png|gif|svg|webp|avif)$/i;
const textName = /\.(txt|md|csv|json|log)$/i;

// A copy keeps its name percent-encoded, and an address encodes that once more.
function nameOf(address) {
    const encoded = address.slice(address.lastIndexOf('/') + 1);
    try {
        return decodeURIComponent(decodeURIComponent(encoded));
    } catch {
        return encoded;
    }
}

function load(address) {
    return new Promise((resolve, reject) => {
        const request = new XMLHttpRequest();
        request.open('GET', address);
        request.responseType = 'blob';
        request.onload = () => resolve(request.response);
        request.onerror = () => reject(new Error('The file could not be loaded.'));
        request.send();
    });
}

function sizeText(bytes) {
    if (bytes < 1000) return `${bytes} bytes`;
    return bytes < 1e6 ? `${(bytes / 1e3).toFixed(1)} kB` : `${(bytes / 1e6).toFixed(1)} MB`;
}

async function describe(figure, address, name) {
    const blob = await load(address);
    figure.querySelector('figcaption').textContent = `${name} · ${sizeText(blob.size)}`;
    if (!textName.test(name)) return;
    const lines = document.createElement('pre');
    lines.textContent = (await blob.text()).split('\n').slice(0, 3).join('\n');
    figure.prepend(lines);
}

function preview(address, name) {
    const figure = document.createElement('figure');
    const caption = document.createElement('figcaption');
    caption.textContent = name;
    if (imageName.test(name)) {
        const image = document.createElement('img');
        image.src = address;
        image.alt = name;
        figure.append(image);
    }
    figure.append(caption);
    describe(figure, address, name).catch((error) => {
        caption.textContent = `${name} · ${error.message}`;
    });
    return figure;
}

function photo(dataUrl) {
    const kind = dataUrl.slice('data:image/'.length, dataUrl.indexOf(';')).toUpperCase();
    const image = document.createElement('img');
    const caption = document.createElement('figcaption');
    const bytes = Math.floor((dataUrl.length - dataUrl.indexOf(',') - 1) * 3 / 4);
    image.onload = () => {
        caption.textContent =
            `${kind} · ${image.naturalWidth} × ${image.naturalHeight} · ${sizeText(bytes)}`;
    };
    image.src = dataUrl;
    image.alt = 'The photo';
    const figure = document.createElement('figure');
    figure.append(image, caption);
    return figure;
}

// The shapes that a picker's reply has: an address, a record with one or with content, or a list;
// a photo is a record with its data URL, or the URL.
export function previewsOf(data) {
    return [data].flat().flatMap((item) => {
        if (typeof item === 'string' && item.startsWith('data:image/')) return [photo(item)];
        if (item && item.image) return [photo(item.image)];
        if (typeof item === 'string' && item.includes('://')) return [preview(item, nameOf(item))];
        if (item && item.fileUri) return [preview(item.fileUri, nameOf(item.fileUri))];
        if (item && item.data) return [preview(item.data, item.fileName ?? 'no name')];
        return [];
    });
}

// A reply as text, with long values cut.
export function shortened(data) {
    const longest = 72;
    return JSON.stringify(data, (key, value) => (
        typeof value === 'string' && value.length > longest
            ? `${value.slice(0, longest)}… (${value.length} characters)` : value
    ));
}
