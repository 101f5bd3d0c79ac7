// Proves a gallery in a browser without a display, from its files as a user opens them:
//     node gallery_check.js GALLERY PICTURES
// Each thing that isn't so is told, and makes the status 1. PICTURES is a folder for pictures of the
// pages, to be looked at, and for an index of 60,000 objects, in which a search is timed.
'use strict';

const fs = require('fs');
const path = require('path');
const { pathToFileURL } = require('url');
const { openBrowser } = require('./browser.js');

const [gallery, pictures] = process.argv.slice(2);
const axe = fs.readFileSync(require.resolve('axe-core/axe.min.js'), 'utf8');
const addressOf = (name) => pathToFileURL(path.join(path.resolve(gallery), name)).href;
const kKeyMilliseconds = 50;
const kPageBytes = 300 * 1024;
const kIndexBytes = 40 * 1024; // of a level
const kMostJumps = 0.01;
let faults = 0;

function expect(isSo, what) {
    if (!isSo)
        console.log(`not so: ${what}`);
    faults += isSo ? 0 : 1;
}

const type = (page, text) => page.ask((value) => {
    const words = document.getElementById('words');
    words.value = value;
    words.dispatchEvent(new Event('input', { bubbles: true }));
    return document.getElementById('found').value;
}, text);

async function prove(page, name) {
    // The browser runs the checker itself; the pages' own policy lets no foreign script in.
    await page.ask(axe);
    const { violations } = JSON.parse(await page.ask('axe.run({preload: false}).then(JSON.stringify)'));
    for (const { id, impact, help, nodes } of violations)
        expect(!['serious', 'critical'].includes(impact),
            `${name}: ${impact}: ${id}: ${help}: ${nodes[0].html}`);
    expect(await page.ask('document.documentElement.scrollWidth <= innerWidth'), `${name}: too wide`);
    expect(page.faults.length === 0, `${name}: the console told ${page.faults.join('; ')}`);
    page.faults.length = 0;
}

const kLooks = [['wide', 1280, 900, 1, 'light'], ['dark', 1280, 900, 1, 'dark'],
    ['small', 360, 740, 2, 'light'], ['4k', 3840, 2160, 1, 'dark']];

async function lookAt(page, name) {
    for (const [look, width, height, scale, scheme] of kLooks) {
        await page.look(width, height, scale, scheme, path.join(pictures, `${name}-${look}.png`));
        await prove(page, `${name}, ${look}`);
    }
    await page.size(1280, 900, 1, 'light');
}

/** How far things jump while a page is scrolled through, as browsers measure it: 0.1 is good. */
const jumpsOf = (page) => page.ask(async () => {
    const pause = (milliseconds) => new Promise((done) => setTimeout(done, milliseconds));
    let jumps = 0;
    new PerformanceObserver((list) => list.getEntries().forEach((entry) => { jumps += entry.value; }))
        .observe({ type: 'layout-shift', buffered: true });
    for (let y = 0; y < document.documentElement.scrollHeight; y += innerHeight / 2) {
        scrollTo(0, y);
        await pause(60);
    }
    scrollTo(0, 0);
    await pause(200);
    return jumps;
});

async function proveCalm(page, name) {
    const jumps = await jumpsOf(page);
    expect(jumps < kMostJumps, `${name} jumps by ${jumps}`);
}

async function checkIndex(page) {
    await page.go(addressOf('index.html'));
    await page.until('document.getElementById("found").value !== ""');
    const levels = await page.ask('document.querySelectorAll("#levels li").length');
    expect(levels > 0, 'the index shows levels');
    await proveCalm(page, 'the index');
    await lookAt(page, 'index');
    await type(page, 'lara');
    await page.until('document.querySelectorAll("#results .card").length > 0');
    expect(await page.ask('document.getElementById("levels").hidden'), 'hits take the place of levels');
    await page.until('location.hash === "#words=lara"');
    await lookAt(page, 'search');
    const all = await page.ask('document.getElementById("found").value');
    const one = await page.ask(() => {
        const game = document.getElementById('game');
        game.value = '2';
        game.dispatchEvent(new Event('input', { bubbles: true }));
        return document.getElementById('found').value;
    });
    expect(one !== all, `the game changes what is found: ${all}, ${one}`);
    expect(await type(page, 'no such thing') === 'No object', 'there may be no hit');
    await page.ask('document.querySelector(".skip").click()');
    await page.until('location.hash === "#main"');
    expect(await page.ask('document.getElementById("words").value') !== '', 'the search stays when skipped');
    return levels;
}

/** An index of 1,000 levels of 60 objects, none of them like another, which is the most work. */
function makeLargeIndex() {
    const folder = path.join(pictures, 'large');
    fs.mkdirSync(folder, { recursive: true });
    for (const file of ['index.html', 'gallery.css', 'gallery.js'])
        fs.copyFileSync(path.join(gallery, file), path.join(folder, file));
    globalThis.morlikIndex = [];
    (0, eval)(fs.readFileSync(path.join(gallery, 'search.js'), 'utf8'));
    const known = globalThis.morlikIndex.flatMap((level) => level[4]);
    const lines = ['globalThis.morlikIndex = [];'];
    for (let level = 0, next = 0; level < 1000; ++level) {
        const objects = Array.from({ length: 60 }, () => {
            const [anchor, number, name, ...rest] = known[next % known.length];
            return [anchor, number, `${name} ${next++}`, ...rest];
        });
        lines.push(`morlikIndex.push(${JSON.stringify([`l${level}`, `level${level}.tr4`, '', 4, objects])});`);
    }
    fs.writeFileSync(path.join(folder, 'search.js'), lines.join('\n') + '\n');
    return pathToFileURL(path.resolve(folder, 'index.html')).href;
}

/** The slowest key of some searches, to the layout of what it shows; of each the best of five. */
async function timeSearch(page) {
    await page.go(makeLargeIndex());
    await page.until('document.getElementById("found").value !== ""');
    return page.ask(async () => {
        const words = document.getElementById('words');
        const timeOf = async (text) => {
            words.value = '';
            words.dispatchEvent(new Event('input', { bubbles: true }));
            await new Promise((done) => setTimeout(done, 50));
            words.value = text;
            const start = performance.now();
            words.dispatchEvent(new Event('input', { bubbles: true }));
            document.body.getBoundingClientRect(); // lays it out
            return performance.now() - start;
        };
        const slowest = { milliseconds: 0, text: '' };
        for (const text of ['l', 'la', 'lara', 'door', '9', '91', 'a e', 'zzz']) {
            const times = [];
            for (let i = 0; i < 5; ++i)
                times.push(await timeOf(text));
            if (Math.min(...times) > slowest.milliseconds)
                Object.assign(slowest, { milliseconds: Math.min(...times), text });
        }
        return slowest;
    });
}

async function checkLevel(page, folder) {
    const name = `levels/${folder}/index.html`;
    const files = fs.readdirSync(path.join(gallery, 'levels', folder)).filter((file) => /\.(html|js)$/.test(file));
    const bytes = files.map((file) => fs.statSync(path.join(gallery, 'levels', folder, file)).size)
        .reduce((sum, size) => sum + size, 0);
    expect(bytes <= kPageBytes, `${name} has ${bytes} bytes`);
    await page.go(addressOf(name));
    const { title } = JSON.parse(fs.readFileSync(path.join(gallery, 'levels', folder, 'made.json')));
    expect(await page.ask('document.querySelector("h1").textContent') === title, `${name} shows ${title}`);
    await proveCalm(page, name);
    await lookAt(page, 'level');
    const cards = await page.ask('document.querySelectorAll(".card").length');
    await type(page, '0');
    expect(await page.ask('document.querySelectorAll(".card:not([hidden])").length') < cards,
        'words leave cards out');
    await type(page, '');

    await page.ask('document.querySelector(".card a").focus()');
    await page.press('Enter', 'Enter', 13);
    await page.until('document.getElementById("object").open');
    await page.until('document.querySelector("dialog img").naturalWidth > 0');
    const turning = await page.ask('document.querySelector("dialog img").src');
    expect(turning.endsWith('.webp'), `the object turns: ${turning}`);
    await lookAt(page, 'object');
    await page.ask('[...document.querySelectorAll(".views button")].at(-1).click()');
    expect(await page.ask('document.querySelector("dialog img").src') !== turning, 'it has other pictures');
    const model = await page.ask('document.querySelector(".files a")?.href');
    expect(model && fs.existsSync(new URL(model)), `the model is there: ${model}`);
    const first = await page.ask('location.hash');
    await page.press('ArrowRight', 'ArrowRight', 39);
    expect(await page.ask('location.hash') !== first, 'a key leads to the next object');
    await page.press('Escape', 'Escape', 27);
    await page.until('!document.getElementById("object").open');
    await page.until('document.activeElement.closest(".card") !== null'); // the focus comes back

    const sounds = await page.ask('document.querySelectorAll("#sounds audio").length');
    if (sounds > 0) {
        await page.ask('document.querySelector("#sounds audio").play()');
        await page.until('document.querySelector("#sounds audio").currentTime > 0');
        expect(await page.ask('document.querySelector("#sounds audio").error === null'), 'a sound plays');
        // All of them can be decoded: with what they hold known, the player knows how long they are.
        const silent = await page.ask(async () => {
            const all = [...document.querySelectorAll('#sounds audio')];
            const states = await Promise.all(all.map((audio) => new Promise((done) => {
                audio.addEventListener('loadedmetadata', () => done(audio.duration > 0));
                audio.addEventListener('error', () => done(false));
                audio.preload = 'metadata';
                audio.load();
            })));
            return states.filter((isGood) => !isGood).length;
        });
        expect(silent === 0, `${silent} of ${sounds} sounds of ${folder} can't be played`);
    }
    await prove(page, name);
    return { cards, sounds };
}

async function main() {
    fs.mkdirSync(pictures, { recursive: true });
    const browser = openBrowser(process.env.CHROMIUM ?? '/usr/bin/chromium');
    try {
        const page = await browser.openPage();
        const levels = await checkIndex(page);
        const indexBytes = ['index.html', 'search.js']
            .map((file) => fs.statSync(path.join(gallery, file)).size)
            .reduce((sum, size) => sum + size, 0);
        expect(indexBytes / levels <= kIndexBytes, `the index has ${indexBytes} bytes`);
        let cards = 0;
        let sounds = 0;
        for (const folder of fs.readdirSync(path.join(gallery, 'levels'))) {
            const level = await checkLevel(page, folder);
            cards += level.cards;
            sounds += level.sounds;
        }
        const slowest = await timeSearch(page);
        expect(slowest.milliseconds < kKeyMilliseconds,
            `a search for "${slowest.text}" takes ${slowest.milliseconds} ms`);
        console.log(`${levels} levels, ${cards} cards, ${sounds} samples; ${Math.round(indexBytes / levels)} ` +
            `bytes of index a level; in 60,000 objects the slowest key takes ` +
            `${slowest.milliseconds.toFixed(1)} ms; ${faults} faults`);
    } finally {
        await browser.close();
    }
}

main().then(() => process.exit(faults > 0 ? 1 : 0), (failure) => {
    console.log(failure);
    process.exit(1);
});
