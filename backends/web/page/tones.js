// SPDX-License-Identifier: MIT
// Plays the tones of the form, one after the other.
let context;
let free = 0;

export function playTone([hertz, milliseconds]) {
  try {
    context ??= new AudioContext();
    context.resume();
    const start = Math.max(context.currentTime, free);
    const oscillator = new OscillatorNode(context, { frequency: hertz });
    const volume = new GainNode(context, { gain: 0.2 });
    oscillator.connect(volume).connect(context.destination);
    oscillator.start(start);
    oscillator.stop(start + milliseconds / 1000);
    free = start + milliseconds / 1000;
  } catch {
    // A machine without sound: the reading is on the screen.
  }
}
