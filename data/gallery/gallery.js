// The script of all pages of a gallery. Without it they show the same, but for the search and the
// larger views. Texts come into a page as texts alone, never as markup.
'use strict';
(() => {
    const byId = (id) => document.getElementById(id);
    const kSvg = 'http://www.w3.org/2000/svg';

    /** An element with attributes; functions among these listen to an event. */
    function make(tag, attributes = {}, ...children) {
        const element = tag === 'svg' || tag === 'image' || tag === 'rect'
            ? document.createElementNS(kSvg, tag) : document.createElement(tag);
        for (const [name, value] of Object.entries(attributes)) {
            if (typeof value === 'function')
                element.addEventListener(name, value);
            else if (value !== undefined && value !== false)
                element.setAttribute(name, value);
        }
        element.append(...children.filter((child) => child !== undefined));
        return element;
    }

    const grouped = (count) => count.toLocaleString('en');
    const counted = (count, one, many) => count > 0 ? `${grouped(count)} ${count === 1 ? one : many}` : '';
    const factsOf = (texts) => make('p', { class: 'facts' }, ...texts.filter((text) => text)
        .flatMap((text) => [make('span', {}, text), ' ']));
    const kKinds = { m: 'moveable', s: 'static mesh', p: 'sprites' };
    const shownName = (name, anchor, number) => name || `${kKinds[anchor[0]]} ${number}`;
    /** What is put into the address behind "#"; it moves nothing. */
    const setHash = (hash) => history.replaceState(null, '', `#${hash}`);

    // The index.

    const kMostShown = 40;

    /** Equal objects of all levels as one: what they are, and where. */
    function groupsOf(levels) {
        const groups = new Map();
        levels.forEach(([folder, title, below, game, objects]) => {
            const level = { folder, title, below, game };
            for (const [anchor, number, name, other, meshes, animations, textures, picture] of objects) {
                const kind = anchor[0];
                const key = [kind, number, name, other, meshes, animations, textures, picture].join('\n');
                let group = groups.get(key);
                if (group === undefined) {
                    group = { kind, anchor, number, name, other, meshes, animations, textures, picture,
                        places: [], text: `${name}\n${other}`.toLowerCase() };
                    groups.set(key, group);
                }
                group.places.push({ level, anchor });
            }
        });
        return [...groups.values()];
    }

    /** How well a group fits the words: 0 best, -1 not at all. */
    function rankOf(group, words) {
        let rank = 0;
        for (const word of words) {
            if (word === String(group.number))
                continue;
            const at = group.text.indexOf(word);
            if (at < 0)
                return -1;
            const isStart = at === 0 || group.text[at - 1] === '\n';
            const end = group.text[at + word.length];
            rank = Math.max(rank, !isStart ? 2 : end === undefined || end === '\n' ? 0 : 1);
        }
        return rank;
    }

    /** The groups that fit, the best first, and how many places they have together. */
    function search(groups, words, game, kind) {
        const ranked = [[], [], []];
        let count = 0;
        for (const group of groups) {
            if (kind && group.kind !== kind)
                continue;
            const rank = rankOf(group, words);
            if (rank < 0)
                continue;
            const places = game ? placesIn(group, game).length : group.places.length;
            if (places > 0)
                ranked[rank].push(group);
            count += places;
        }
        return { hits: ranked.flat(), count };
    }

    const placesIn = (group, game) =>
        game ? group.places.filter(({ level }) => level.game === game) : group.places;

    const addressOf = ({ level, anchor }) => `levels/${level.folder}/index.html#${anchor}`;
    const titleOf = ({ level }) => level.below ? `${level.title} (${level.below})` : level.title;

    function placesOf(places) {
        const link = (place) => make('a', { href: addressOf(place) }, titleOf(place));
        if (places.length === 1)
            return make('p', { class: 'other' }, 'in ', link(places[0]));
        const list = make('ul');
        const fill = () => list.childElementCount === 0 &&
            list.append(...places.map((place) => make('li', {}, link(place))));
        return make('details', { toggle: fill },
            make('summary', {}, `in ${grouped(places.length)} levels`), list);
    }

    function resultCard(group, places) {
        const name = shownName(group.name, group.anchor, group.number);
        const shot = group.picture
            ? make('img', { class: 'shot', src: group.picture, alt: `Picture of ${name}`, width: 256,
                height: 256, loading: 'lazy', decoding: 'async' })
            : make('span', { class: 'shot none' }, 'no picture');
        const sizes = group.kind === 'p' ? [counted(group.meshes, 'sprite', 'sprites')]
            : [counted(group.meshes, 'mesh', 'meshes'),
                counted(group.animations, 'animation', 'animations'),
                counted(group.textures, 'texture', 'textures')];
        return make('li', { class: 'card' },
            make('a', { href: addressOf(places[0]) }, shot,
                make('span', { class: 'name' }, make('span', { class: 'id' }, String(group.number)),
                    ` ${name}`)),
            group.other ? make('p', { class: 'other' }, `in IV: ${group.other}`) : undefined,
            factsOf(sizes), placesOf(places));
    }

    function startIndex(groups) {
        const [words, game, kind] = ['words', 'game', 'kind'].map(byId);
        const results = byId('results');
        const rows = [...document.querySelectorAll('#levels li')];

        function showHits(hits, wantedGame) {
            const list = make('ul', { class: 'cards' });
            const more = make('button', { type: 'button', class: 'more' }, 'Show more');
            const add = () => {
                const from = list.childElementCount;
                list.append(...hits.slice(from, from + kMostShown)
                    .map((group) => resultCard(group, placesIn(group, wantedGame))));
                more.hidden = list.childElementCount >= hits.length;
            };
            more.addEventListener('click', () => {
                const last = list.lastElementChild;
                add();
                last.nextElementSibling?.querySelector('a').focus();
            });
            add();
            results.replaceChildren(list, more);
        }

        function update() {
            const text = words.value.trim().toLowerCase();
            const wantedGame = Number(game.value);
            const isSearch = text !== '' || kind.value !== '';
            byId('levels').hidden = isSearch;
            results.hidden = !isSearch;
            if (isSearch) {
                const { hits, count } = search(groups, text.split(/\s+/).filter((word) => word),
                    wantedGame, kind.value);
                showHits(hits, wantedGame);
                byId('found').value = count === 0 ? 'No object'
                    : counted(hits.length, 'object', 'objects') +
                        (count > hits.length ? ` in ${grouped(count)} places` : '');
                return;
            }
            results.replaceChildren();
            let shown = 0;
            for (const row of rows) {
                row.hidden = wantedGame > 0 && Number(row.dataset.game) !== wantedGame;
                shown += row.hidden ? 0 : 1;
            }
            byId('found').value = shown === 0 ? 'No level' : counted(shown, 'level', 'levels');
        }

        function keep() {
            const state = new URLSearchParams();
            for (const field of [words, game, kind])
                if (field.value)
                    state.set(field.id, field.value);
            setHash(state.toString());
        }

        const form = byId('search');
        form.addEventListener('submit', (event) => event.preventDefault());
        let waiting = 0; // browsers refuse an address that changes with each key
        form.addEventListener('input', () => {
            update();
            clearTimeout(waiting);
            waiting = setTimeout(keep, 400);
        });
        // A link within the page, which goes by the search, leaves it as it is.
        window.addEventListener('hashchange', () => {
            if (location.hash !== '#main') {
                restoreSearch();
                update();
            }
        });
        update();
        document.addEventListener('keydown', (event) => {
            if (event.key === '/' && event.target === document.body) {
                event.preventDefault();
                words.focus();
            }
        });
    }

    /** Takes the search from the address. */
    function restoreSearch() {
        const state = new URLSearchParams(location.hash.slice(1));
        for (const id of ['words', 'game', 'kind'])
            byId(id).value = state.get(id) ?? '';
    }

    /** The objects of all levels are many: they come behind the page, while one may type already. */
    function loadIndex() {
        restoreSearch();
        document.head.append(make('script', {
            src: 'search.js',
            load: () => startIndex(groupsOf(globalThis.morlikIndex)),
        }));
    }

    // The page of a level.

    const kRoot = '../../';
    const isStill = matchMedia('(prefers-reduced-motion: reduce)');
    const secondsOf = (frames) => `${(frames / 30).toFixed(1)} s`;

    /** The pictures of an object to choose from. */
    function viewsOf(object) {
        const views = [];
        const add = (label, file, alt) => file && views.push({ label, file, alt });
        add('Turning', object.r, 'turning');
        add('Still', object.p, 'still');
        for (const [number, file] of Object.entries(object.v ?? {}))
            add(`Animation ${number} (${secondsOf(object.a[number])})`, file, `animation ${number}`);
        return views;
    }

    function pictureOf(object, name) {
        const views = viewsOf(object);
        if (views.length === 0)
            return make('div', {}, make('span', { class: 'shot none' }, 'Nothing to see'));
        const image = make('img', { class: 'shot', width: 320, height: 320 });
        const buttons = views.map((view) => make('button', { type: 'button', click: () => show(view) },
            view.label));
        function show(view) {
            image.src = kRoot + view.file;
            image.alt = `${name}, ${view.alt}`;
            buttons.forEach((button, i) => button.setAttribute('aria-pressed', views[i] === view));
        }
        show(isStill.matches ? views.find((view) => view.file === object.p) ?? views[0] : views[0]);
        return make('div', {}, image, make('div', { class: 'views' }, ...buttons));
    }

    function numbersOf(object) {
        const frames = object.a?.reduce((sum, count) => sum + count, 0) ?? 0;
        const rows = [
            ['Kind', kKinds[object.k[0]]],
            ['Name in IV', object.e],
            [object.k[0] === 'p' ? 'Sprites' : 'Meshes', object.m > 0 ? grouped(object.m) : ''],
            ['Animations', object.a ? `${grouped(object.a.length)}, ${secondsOf(frames)} in all` : ''],
            ['Textures', object.t > 0 ? grouped(object.t) : ''],
        ];
        return make('dl', { class: 'numbers' }, ...rows.filter(([, value]) => value)
            .flatMap(([label, value]) => [make('dt', {}, label), make('dd', {}, value)]));
    }

    const sectionOf = (heading, content) =>
        content && make('section', {}, make('h3', {}, heading), content);

    function tilesOf(object) {
        return object.x && make('div', { class: 'tiles' }, ...object.x.map(([picture, boxes]) =>
            make('svg', { viewBox: '0 0 256 256', role: 'img',
                'aria-label': `Tile with ${counted(boxes.length, 'texture', 'textures')} of it` },
            make('image', { href: kRoot + picture, width: 256, height: 256 }),
            ...boxes.map(([x, y, width, height]) => make('rect', { x, y, width, height })))));
    }

    function soundsOf(object, sounds) {
        const slots = (object.s ?? []).filter((slot) => sounds[slot]);
        if (slots.length === 0)
            return undefined;
        return make('ul', { class: 'sounds' }, ...slots.map((slot) => make('li', {},
            make('h3', {}, make('span', { class: 'id' }, String(slot))),
            make('ul', {}, ...sounds[slot].map((file, i) => make('li', {},
                make('audio', { controls: '', preload: 'none', src: kRoot + file,
                    'aria-label': `Sound ${slot}, sample ${i + 1}` })))))));
    }

    function filesOf(object) {
        const link = (file, label) => make('li', {}, make('a', { href: file, download: '' }, label));
        const links = object.g ? [link(kRoot + object.g, 'glTF model (.glb)')] : [];
        for (const file of object.z ?? [])
            links.push(link(file.split('/').map(encodeURIComponent).join('/'), file.split('/').pop()));
        return links.length > 0 ? make('ul', { class: 'files' }, ...links) : undefined;
    }

    function startLevel({ objects, sounds }) {
        const dialog = byId('object');
        const numbers = new Map(objects.map((object, i) => [object.k, i]));
        let shown = -1;

        const isHidden = (object) => byId(object.k)?.hidden ?? true;
        /** The next object that the filter shows. */
        function step(way) {
            for (let i = shown + way; i >= 0 && i < objects.length; i += way)
                if (!isHidden(objects[i])) {
                    setHash(objects[i].k);
                    open(i);
                    return;
                }
        }

        function open(number) {
            const object = objects[number];
            const name = shownName(object.n, object.k, object.i);
            const button = (label, text, click) =>
                make('button', { type: 'button', 'aria-label': label, title: label, click }, text);
            shown = number;
            dialog.replaceChildren(
                make('header', {},
                    make('h2', { id: 'object-name', tabindex: -1 },
                        make('span', { class: 'id' }, String(object.i)), ` ${name}`),
                    button('Previous object', '‹', () => step(-1)),
                    button('Next object', '›', () => step(1)),
                    button('Close', '×', () => dialog.close())),
                make('div', { class: 'large' }, pictureOf(object, name),
                    make('div', {}, object.f && make('p', { class: 'fault' }, object.f), numbersOf(object),
                        sectionOf('Files', filesOf(object)), sectionOf('Textures', tilesOf(object)),
                        sectionOf('Sounds', soundsOf(object, sounds)))));
            if (!dialog.open)
                dialog.showModal();
            dialog.scrollTop = 0;
            byId('object-name').focus();
        }

        function follow() {
            const number = numbers.get(location.hash.slice(1));
            if (number !== undefined)
                open(number);
            else if (dialog.open)
                dialog.close();
        }

        dialog.addEventListener('close', () => {
            const card = byId(objects[shown].k);
            setHash('');
            dialog.replaceChildren(); // what plays or moves ends
            card?.querySelector('a').focus();
        });
        dialog.addEventListener('click', (event) => event.target === dialog && dialog.close());
        dialog.addEventListener('keydown', (event) => {
            const way = { ArrowLeft: -1, ArrowRight: 1 }[event.key];
            if (way !== undefined && event.target.tagName !== 'AUDIO')
                step(way);
        });
        window.addEventListener('hashchange', follow);
        follow();
        startFilter();
    }

    /** The cards of a level that have all words. */
    function startFilter() {
        const words = byId('words');
        const cards = [...document.querySelectorAll('.card')].map((card) => ({ card,
            text: card.textContent.toLowerCase(), number: card.querySelector('.id').textContent }));
        const update = () => {
            const wanted = words.value.trim().toLowerCase().split(/\s+/).filter((word) => word);
            let count = 0;
            for (const { card, text, number } of cards) {
                card.hidden = !wanted.every((word) => /^\d+$/.test(word)
                    ? number === word : text.includes(word));
                count += card.hidden ? 0 : 1;
            }
            document.querySelectorAll('main > section').forEach((section) => {
                section.hidden = wanted.length > 0 && !section.querySelector('.card:not([hidden])');
            });
            byId('found').value = wanted.length === 0 ? '' : count === 0 ? 'No object'
                : counted(count, 'object', 'objects');
        };
        const form = byId('filter');
        form.addEventListener('submit', (event) => event.preventDefault());
        words.addEventListener('input', update);
        update();
        document.addEventListener('keydown', (event) => {
            if (event.key === '/' && event.target === document.body) {
                event.preventDefault();
                words.focus();
            }
        });
    }

    if (document.body.classList.contains('index'))
        loadIndex();
    else
        startLevel(globalThis.morlikLevel);
})();
