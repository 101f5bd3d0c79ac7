// A Chromium without a display, driven by its own protocol over a pipe: messages are JSON texts that
// a 0 byte ends, from us on handle 3 and to us on handle 4.
'use strict';

const { spawn } = require('child_process');
const fs = require('fs');
const os = require('os');
const path = require('path');

/** Starts the browser of that path; `close` ends it and removes its profile. */
function openBrowser(program) {
    const profile = fs.mkdtempSync(path.join(os.tmpdir(), 'morlik-browser-'));
    const words = ['--headless=new', '--remote-debugging-pipe', '--no-first-run', '--mute-audio',
        '--disable-gpu', '--disable-dev-shm-usage', '--force-color-profile=srgb',
        '--autoplay-policy=no-user-gesture-required', `--user-data-dir=${profile}`, 'about:blank'];
    if (process.getuid && process.getuid() === 0)
        words.unshift('--no-sandbox'); // which the browser refuses root without
    const child = spawn(program, words, { stdio: ['ignore', 'ignore', 'ignore', 'pipe', 'pipe'] });
    const waiting = new Map(); // by the number of the message
    const listeners = [];
    let last = 0;
    let rest = '';

    const take = (message) => {
        const asked = waiting.get(message.id);
        if (asked === undefined) {
            listeners.forEach((listener) => listener(message));
            return;
        }
        waiting.delete(message.id);
        if (message.error)
            asked.fail(new Error(`${asked.method}: ${message.error.message}`));
        else
            asked.done(message.result);
    };
    child.stdio[4].setEncoding('utf8');
    child.stdio[4].on('data', (text) => {
        const parts = (rest + text).split('\0');
        rest = parts.pop();
        parts.forEach((part) => take(JSON.parse(part)));
    });
    const ended = new Promise((done) => child.on('exit', done));
    ended.then(() => waiting.forEach((asked) => asked.fail(new Error('The browser ended'))));

    const send = (method, params = {}, sessionId = undefined) => new Promise((done, fail) => {
        waiting.set(++last, { method, done, fail });
        child.stdio[3].write(JSON.stringify({ id: last, method, params, sessionId }) + '\0');
    });

    /** A new page: `send` for its own messages, and `faults`, what its console complains of. */
    const openPage = async () => {
        const { targetId } = await send('Target.createTarget', { url: 'about:blank' });
        const { sessionId } = await send('Target.attachToTarget', { targetId, flatten: true });
        const faults = [];
        const events = [];
        listeners.push((message) => {
            if (message.sessionId !== sessionId)
                return;
            events.filter((event) => event.method === message.method)
                .forEach((event) => event.done(message.params));
            if (message.method === 'Runtime.exceptionThrown')
                faults.push(message.params.exceptionDetails.exception?.description ?? 'exception');
            if (message.method === 'Log.entryAdded' && message.params.entry.level === 'error')
                faults.push(`${message.params.entry.text} ${message.params.entry.url ?? ''}`);
            if (message.method === 'Runtime.consoleAPICalled' && message.params.type === 'error')
                faults.push(JSON.stringify(message.params.args.map((arg) => arg.value)));
        });
        const own = (method, params) => send(method, params, sessionId);
        for (const domain of ['Page', 'Runtime', 'Log'])
            await own(`${domain}.enable`);
        const next = (method) => new Promise((done) => events.push({ method, done }));
        return {
            faults,
            send: own,
            async go(url) {
                const loaded = next('Page.loadEventFired');
                await own('Page.navigate', { url });
                await loaded;
            },
            /** The value of an expression, or what a function gives in the page. */
            async ask(what, ...args) {
                const expression = typeof what === 'function'
                    ? `(${what})(...${JSON.stringify(args)})` : what;
                const { result, exceptionDetails } = await own('Runtime.evaluate',
                    { expression, awaitPromise: true, returnByValue: true });
                if (exceptionDetails)
                    throw new Error(exceptionDetails.exception?.description ?? 'exception');
                return result.value;
            },
            /** Waits until an expression is true, 10 seconds at most. */
            async until(what, ...args) {
                for (let left = 200; left > 0; --left) {
                    if (await this.ask(what, ...args))
                        return;
                    await new Promise((done) => setTimeout(done, 50));
                }
                throw new Error(`never true: ${what}`);
            },
            async press(key, code = key, keyCode = 0) {
                const text = key.length === 1 ? key : key === 'Enter' ? '\r' : undefined;
                const event = { key, code, windowsVirtualKeyCode: keyCode, text };
                await own('Input.dispatchKeyEvent', { type: 'keyDown', ...event });
                await own('Input.dispatchKeyEvent', { type: 'keyUp', ...event });
            },
            async size(width, height, scale, scheme) {
                await own('Emulation.setDeviceMetricsOverride',
                    { width, height, deviceScaleFactor: scale, mobile: false });
                await own('Emulation.setEmulatedMedia',
                    { features: [{ name: 'prefers-color-scheme', value: scheme }] });
            },
            /** Keeps a picture of what such a screen shows. */
            async look(width, height, scale, scheme, file) {
                await this.size(width, height, scale, scheme);
                await new Promise((done) => setTimeout(done, 500)); // pictures come into view
                const { data } = await own('Page.captureScreenshot', { format: 'png' });
                fs.writeFileSync(file, Buffer.from(data, 'base64'));
            },
        };
    };
    const close = async () => {
        child.stdio[3].write(JSON.stringify({ id: ++last, method: 'Browser.close' }) + '\0');
        await ended;
        fs.rmSync(profile, { recursive: true, force: true, maxRetries: 10 });
    };
    return { openPage, close };
}

module.exports = { openBrowser };
