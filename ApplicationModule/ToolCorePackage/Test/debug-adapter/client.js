// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
'use strict';

// client.js HOST SCRIPT: starts HOST, which writes its port, and debugs SCRIPT in it.

const assert = require('assert');
const {spawn} = require('child_process');
const {DebugClient} = require('@vscode/debugadapter-testsupport');

const [program, script] = process.argv.slice(2);
const patience = setTimeout(() => fail(new Error('the session took too long')), 60000);
const host = spawn(program, [], {stdio: ['ignore', 'inherit', 'pipe']});

function fail(error) {
    console.error(error);
    host.kill();
    process.exit(1);
}

function readPort() {
    return new Promise((resolve, reject) => {
        let text = '';
        host.stderr.on('data', (data) => {
            text += data;
            const port = /port (\d+)/.exec(text);
            if (port)
                resolve(Number(port[1]));
        });
        host.on('exit', () => reject(new Error('the host ended: ' + text)));
    });
}

async function locals(client, frameId) {
    const scopes = (await client.scopesRequest({frameId})).body.scopes;
    assert.deepStrictEqual(scopes.map((scope) => scope.name), ['Locals', 'Upvalues', 'Globals']);
    const reference = scopes[0].variablesReference;
    const variables = (await client.variablesRequest({variablesReference: reference})).body.variables;
    return {reference, text: variables.map((variable) => `${variable.name}=${variable.value}`).join(' ')};
}

async function evaluate(client, expression, frameId) {
    return (await client.evaluateRequest({expression, frameId, context: 'watch'})).body;
}

async function stopInTheCoroutine(client) {
    const hit = client.hitBreakpoint({program: script}, {path: script, line: 4});
    const stopped = await client.waitForEvent('stopped');
    await hit;
    const threadId = stopped.body.threadId;
    const threads = (await client.threadsRequest()).body.threads;
    assert.deepStrictEqual(threads.map((thread) => thread.name), ['main', 'coroutine session.lua:8']);
    assert.strictEqual(threadId, threads[1].id);
    return threadId;
}

async function look(client, threadId) {
    const frames = (await client.stackTraceRequest({threadId})).body;
    assert.strictEqual(frames.totalFrames, frames.stackFrames.length);
    assert.strictEqual(frames.stackFrames[0].name, 'describe');
    const frameId = frames.stackFrames[0].id;
    const found = await locals(client, frameId);
    assert.strictEqual(found.text, 'name="lamp" count=1');
    await client.setVariableRequest({variablesReference: found.reference, name: 'name', value: '"desk"'});
    assert.strictEqual((await evaluate(client, 'name .. count + 1', frameId)).result, '"desk2"');
    await assert.rejects(evaluate(client, 'no expression', frameId));
}

async function step(client, threadId) {
    for (const [request, line] of [['next', 5], ['stepOut', 9], ['stepIn', 10]]) {
        const stop = client.assertStoppedLocation('step', {path: script, line});
        await client.send(request, {threadId});
        await stop;
    }
}

async function stopOnACondition(client, threadId) {
    await client.setBreakpointsRequest({source: {path: script}, breakpoints: [{line: 17, condition: 'seen.size == 1'}]});
    const stop = client.assertStoppedLocation('breakpoint', {path: script, line: 17});
    await client.continueRequest({threadId});
    const frameId = (await stop).body.stackFrames[0].id;
    const table = await evaluate(client, 'seen', frameId);
    const entries = (await client.variablesRequest({variablesReference: table.variablesReference})).body.variables;
    assert.deepStrictEqual(entries.map((entry) => entry.name), ['[1]', 'size']);
}

async function stopOnTheError(client) {
    await client.setExceptionBreakpointsRequest({filters: ['error']});
    const output = client.assertOutput('stdout', 'desk x1, lamp x2, lamp x3\n');
    const stop = client.waitForEvent('stopped');
    await client.continueRequest({threadId: 1});
    await output;
    const stopped = (await stop).body;
    assert.strictEqual(stopped.reason, 'exception');
    assert.match(stopped.text, /the end/);
    // The innermost call is that of a function without source.
    const [raising, raised] = (await client.stackTraceRequest({threadId: 1})).body.stackFrames;
    assert.deepStrictEqual([raising.name, raising.source, raised.line], ['error', undefined, 21]);
    const report = client.waitForEvent('output');
    await client.continueRequest({threadId: 1});
    assert.match((await report).body.output, /the end/);
}

async function main() {
    const client = new DebugClient('', '', 'lua');
    await client.start(await readPort());
    const threadId = await stopInTheCoroutine(client);
    await look(client, threadId);
    await step(client, threadId);
    await stopOnACondition(client, threadId);
    await stopOnTheError(client);
    await assert.rejects(client.terminateRequest({}), /not supported/);
    host.removeAllListeners('exit');
    const ended = new Promise((resolve) => host.on('exit', resolve));
    await client.stop();
    assert.strictEqual(await ended, 0);
    clearTimeout(patience);
    console.log('the client has seen all it came for');
}

main().catch(fail);
