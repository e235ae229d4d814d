// SPDX-License-Identifier: Apache-2.0
import { execFile } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import os from 'node:os';
import path from 'node:path';

function required(name) {
  const value = process.env[name];
  if (!value) throw new Error(`set ${name}; ctest does`);
  return value;
}

/** The command of this build. */
const COMMAND = required('CHARTBRIDGE_COMMAND');
/** The folder of the example charts, data and maps. */
export const EXAMPLES = required('CHARTBRIDGE_EXAMPLES');
/** Where pictures stay that somebody may want to look at. */
export const PICTURES = required('CHARTBRIDGE_PICTURES');

/** Runs `chartbridge ARGUMENTS` and throws when it fails or complains. */
export function chartbridge(...args) {
  return new Promise((resolve, reject) => {
    execFile(COMMAND, args, { maxBuffer: 1 << 28, timeout: 300000 }, (error, stdout, stderr) => {
      if (error || stderr) reject(new Error(`chartbridge ${args.join(' ')}: ${stderr || error.message}`));
      else resolve(stdout);
    });
  });
}

/** A private folder, removed with everything in it at the end of the test. */
export class WorkFolder {
  constructor(test) {
    this.path = mkdtempSync(path.join(os.tmpdir(), 'chartbridge-test-'));
    test.after(() => rmSync(this.path, { recursive: true }));
  }

  file(name) {
    return path.join(this.path, name);
  }

  /** Writes a file and returns its path. */
  write(name, content) {
    writeFileSync(this.file(name), content);
    return this.file(name);
  }

  readJson(name) {
    return JSON.parse(readFileSync(this.file(name), 'utf8'));
  }
}
