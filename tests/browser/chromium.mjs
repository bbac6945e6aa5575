// The browser of the browser tests: Debian's chromium, headless, driven by
// playwright-core. Shared by every test script of this folder.
import fs from 'node:fs';

export const kChromium = '/usr/bin/chromium';

// Why the browser tests cannot run here, or null when they can: chromium
// and playwright-core are installed by scripts/setup.
export async function missingBrowser() {
  if (!fs.existsSync(kChromium)) return `no ${kChromium} (scripts/setup installs chromium)`;
  try {
    await import('playwright-core');
  } catch {
    return 'no playwright-core (scripts/setup runs npm ci in tests/browser)';
  }
  return null;
}

export async function launchChromium() {
  const { chromium } = await import('playwright-core');
  // No sandbox: tests run as root in containers, where chromium's sandbox
  // cannot start; and no /dev/shm, which containers keep small.
  return chromium.launch({ executablePath: kChromium, headless: true,
                           args: ['--no-sandbox', '--disable-dev-shm-usage'] });
}
