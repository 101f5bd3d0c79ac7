// Proves all glTF files below a folder with the validator of the format's makers:
//     node gltf_check.js FOLDER
// Each error and each warning is told, and makes the status 1.
'use strict';
const fs = require('fs');
const path = require('path');
const validator = require('gltf-validator');

function* filesBelow(folder) {
    for (const entry of fs.readdirSync(folder, { withFileTypes: true })) {
        const name = path.join(folder, entry.name);
        if (entry.isDirectory()) yield* filesBelow(name);
        else if (/\.gl(b|tf)$/.test(name)) yield name;
    }
}

async function check(name) {
    const read = (file) => new Uint8Array(fs.readFileSync(file));
    const { issues } = await validator.validateBytes(read(name), {
        maxIssues: 1000,
        externalResourceFunction: async (uri) =>
            read(path.join(path.dirname(name), decodeURIComponent(uri))),
    });
    for (const { severity, code, message, pointer } of issues.messages)
        if (severity < 2) console.log(`${name}: ${code}: ${message} ${pointer}`);
    return issues;
}

async function main() {
    const sums = { files: 0, numErrors: 0, numWarnings: 0, numInfos: 0 };
    for (const name of filesBelow(process.argv[2])) {
        const issues = await check(name);
        sums.files += 1;
        for (const kind of ['numErrors', 'numWarnings', 'numInfos']) sums[kind] += issues[kind];
    }
    console.log(
        `${sums.files} glTF files: ${sums.numErrors} errors, ${sums.numWarnings} warnings, ` +
            `${sums.numInfos} notes`);
    process.exitCode = sums.files > 0 && sums.numErrors + sums.numWarnings === 0 ? 0 : 1;
}

main();
