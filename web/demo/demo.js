import { sections, iconPath } from '/cards.js';
import { previewsOf, shortened } from '/previews.js';

const make = (id) => document.getElementById(id).content.firstElementChild.cloneNode(true);

// A call as a developer would write it, with its parts coloured.
function highlighted(command, args) {
    const fragment = document.createDocumentFragment();
    const add = (text, kind) => {
        const span = document.createElement('span');
        span.textContent = text;
        if (kind) span.className = kind;
        fragment.append(span);
    };
    const addValue = (value, indent) => {
        if (value && typeof value === 'object') {
            add('{\n');
            for (const [name, inner] of Object.entries(value)) {
                add(`${indent}  `);
                add(/^\w+$/.test(name) ? name : `'${name}'`, 'key');
                add(': ');
                addValue(inner, `${indent}  `);
                add(',\n');
            }
            add(`${indent}}`);
        } else if (typeof value === 'string') {
            add(`'${value}'`, 'string');
        } else {
            add(String(value), 'number');
        }
    };
    add('call(');
    add(`'${command}'`, 'string');
    add(', ');
    addValue(args, '');
    add(')');
    return fragment;
}

function replyItem(reply) {
    const item = document.createElement('li');
    item.className = reply.success ? 'good' : 'bad';
    const head = document.createElement('strong');
    head.textContent = reply.success ? 'Success' : reply.status;
    item.append(head);
    const detail = reply.success ? reply.data && shortened(reply.data) : reply.message;
    if (detail) {
        const line = document.createElement('span');
        line.className = 'detail';
        line.textContent = detail;
        item.append(line);
    }
    item.append(...previewsOf(reply.data));
    return item;
}

const preparations = {
    // One that the page sets and one that script cannot see.
    async cookies() {
        document.cookie = 'taste=salty; path=/';
        await fetch('/cookies/set');
    },
};

async function run(card, article) {
    const button = article.querySelector('button');
    const list = article.querySelector('.replies');
    const waiting = document.createElement('li');
    waiting.className = 'waiting';
    waiting.textContent = 'Waiting for the reply';
    list.replaceChildren(waiting);
    button.disabled = true;
    try {
        if (card.before) await preparations[card.before]();
    } finally {
        window.ZelkamMobile.call(card.command, card.args, (reply) => {
            waiting.remove();
            button.disabled = false;
            list.append(replyItem(reply));
        });
    }
}

for (const section of sections) {
    const node = make('section');
    node.querySelector('h2').textContent = section.title;
    node.querySelector('.lead').textContent = section.lead;
    for (const card of section.cards) {
        const article = make('card');
        article.dataset.expect = card.expect.join(' ');
        article.dataset.screen = card.screen ?? '';
        article.dataset.share = card.share ? 'yes' : '';
        article.dataset.answer = card.answer ?? '';
        article.dataset.photos = card.photos ? 'yes' : '';
        article.querySelector('path').setAttribute('d', iconPath(card.icon));
        article.querySelector('h3').textContent = card.title;
        article.querySelector('.about').textContent = card.about;
        article.querySelector('code').append(highlighted(card.command, card.args));
        const button = article.querySelector('button');
        button.textContent = card.expect[0] === 'success' ? card.button : 'Try it';
        button.setAttribute('aria-label', `${button.textContent}: ${card.title}`);
        button.addEventListener('click', () => run(card, article));
        node.querySelector('.cards').append(article);
    }
    document.getElementById('sections').append(node);
}

if (!window.ZelkamMobile) {
    for (const button of document.querySelectorAll('button')) button.disabled = true;
    document.querySelector('.top p').textContent = 'This page has to be opened in the application.';
}
