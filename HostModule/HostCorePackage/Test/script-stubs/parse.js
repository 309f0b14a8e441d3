// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
'use strict';

// parse.js FOLDER: every file of the folder is Lua 5.1, and its annotations are well-formed and name declared types.

const assert = require('assert');
const fs = require('fs');
const path = require('path');
const luaparse = require('luaparse');

const folder = process.argv[2];
const plainTypes = ['any', 'boolean', 'fun', 'integer', 'nil', 'number', 'self', 'string', 'table', 'function'];
const shapes = {
    alias: /^[\w.]+( [\w.]+)?$/,
    class: /^[\w.]+(: [\w.]+)?$/,
    field: /^(\w+|\[integer\]|\["([^"\\]|\\.)*"\]) \S.*$/,
    generic: /^\w+ : [\w.]+$/,
    meta: /^$/,
    operator: /^\w+(\(\S+\))?: \S+$/,
    overload: /^fun\(.*\)(: \S+)?$/,
    param: /^(\w+\??|\.\.\.) \S+$/,
    return: /^(fun\(.*\)|[^ {]*\{ \w+: \S+ \}\S*|\S+)$/,
    type: /^\S+$/,
};

/** Names of types in what follows a tag: texts, names of parameters and remarks left out. */
function readTypes(tag, text) {
    if (tag === 'param' || tag === 'alias')
        text = text.replace(/^\S+ ?/, '');
    if (tag === 'class')
        text = text.replace(/^[\w.]+(: )?/, '');
    if (tag === 'field')
        text = text.replace(/^(\w+|\[integer\]|\["([^"\\]|\\.)*"\]) /, '')
            .replace(/^(fun\(.*\)(: \S+)?|\S+)( .*)?$/, '$1');
    if (tag === 'operator')
        text = text.replace(/^\w+/, '');
    return text.replace(/"[^"]*"/g, '').replace(/(\w+\??|\.\.\.): /g, '').match(/[A-Za-z_][\w.]*/g) || [];
}

const declared = new Set(plainTypes);
const used = [];
let nbFunctions = 0;

for (const name of fs.readdirSync(folder).sort()) {
    const text = fs.readFileSync(path.join(folder, name), 'utf8');
    const chunk = luaparse.parse(text, {
        luaVersion: '5.1',
        comments: true,
        onCreateNode: (node) => { nbFunctions += node.type === 'FunctionDeclaration'; },
    });
    assert(text.startsWith('---@meta\n'), name);
    for (const comment of chunk.comments) {
        const tag = /^-@(\w+) ?(.*)$/.exec(comment.value);
        if (!tag)
            continue;
        assert(shapes[tag[1]] && shapes[tag[1]].test(tag[2]), `${name}: ${comment.value}`);
        if (['class', 'alias', 'generic'].includes(tag[1]))
            declared.add(/^[\w.]+/.exec(tag[2])[0]);
        for (const type of readTypes(tag[1], tag[2]))
            used.push([type, `${name}: ${comment.value}`]);
    }
}
for (const [type, place] of used)
    assert(declared.has(type), `nothing declares ${type} in ${place}`);
assert(nbFunctions > 500 && declared.size > 100, `${nbFunctions} functions, ${declared.size} types`);
console.log(`${nbFunctions} functions, ${declared.size} types, ${used.length} uses`);
