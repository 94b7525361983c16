"""Records the null sink's monitor and finds where sounds begin."""

import array
import bisect
import math
import os
import subprocess
import threading
import time
import wave

RATE = 8000
CHUNK_SAMPLES = RATE // 200            # 5 ms
CHUNK_BYTES = CHUNK_SAMPLES * 2
LOUD = 800                             # peak of a chunk that counts as sound
QUIET_GAP = 3.0                        # silence that separates two plays


class Recorder:
    def __init__(self, env, log_dir):
        self.env = env
        self.log_dir = log_dir
        self.times = array.array('d')  # wall clock at the end of each 5 ms chunk
        self.peaks = array.array('i')
        self.lock = threading.Lock()
        self.proc = None
        self.thread = None

    def start(self):
        self.proc = subprocess.Popen(
            ['parec', '-d', 'test.monitor', '--raw', '--format=s16le', f'--rate={RATE}',
             '--channels=1', '--latency-msec=5'],
            env=self.env, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=open(os.path.join(self.log_dir, 'parec.log'), 'ab'))
        self.thread = threading.Thread(target=self._read, daemon=True)
        self.thread.start()
        return self.proc

    def _read(self):
        fd = self.proc.stdout.fileno()
        pending = b''
        while True:
            data = os.read(fd, 4096)
            now = time.time()
            if not data:
                return
            pending += data
            whole = len(pending) // CHUNK_BYTES
            if not whole:
                continue
            samples = array.array('h', pending[:whole * CHUNK_BYTES])
            pending = pending[whole * CHUNK_BYTES:]
            with self.lock:
                # Chunks read together arrived late together: spread them back
                # from the moment of reading, 5 ms apart, never before the last stamp.
                latest = self.times[-1] if self.times else 0.0
                for k in range(whole):
                    part = samples[k * CHUNK_SAMPLES:(k + 1) * CHUNK_SAMPLES]
                    latest = max(latest, now - (whole - 1 - k) * CHUNK_SAMPLES / RATE)
                    self.times.append(latest)
                    self.peaks.append(max(abs(min(part)), abs(max(part))))

    def stop(self):
        if self.proc and self.proc.poll() is None:
            self.proc.terminate()
            try:
                self.proc.wait(timeout=5)
            except subprocess.TimeoutExpired:
                self.proc.kill()

    def receiving(self):
        with self.lock:
            return len(self.times) > 0

    def _window(self, t0, t1):
        with self.lock:
            # Stamps only ever grow, so the window is one slice.
            first = bisect.bisect_left(self.times, t0)
            last = bisect.bisect_right(self.times, t1)
            return list(zip(self.times[first:last], self.peaks[first:last]))

    def onsets(self, t0, t1):
        """Starts of sounds between t0 and t1: a loud chunk after at least
        QUIET_GAP seconds of quiet (the window's start counts as quiet)."""
        found, last_loud = [], None
        for t, peak in self._window(t0, t1):
            if peak < LOUD:
                continue
            if last_loud is None or t - last_loud >= QUIET_GAP:
                found.append(t)
            last_loud = t
        return found

    def loud_time(self, t0, t1):
        """Seconds of sound between t0 and t1."""
        return sum(CHUNK_SAMPLES / RATE for _, p in self._window(t0, t1) if p >= LOUD)

    def dump(self, path, t0, t1):
        """Writes the loud chunks of a window, for a failed scenario's report."""
        with open(path, 'w') as f:
            f.write('# wall clock, peak of each loud 5 ms chunk\n')
            for t, peak in self._window(t0, t1):
                if peak >= LOUD:
                    f.write(f'{t:.3f} {time.strftime("%H:%M:%S", time.localtime(t))} {peak}\n')

    @staticmethod
    def write_tone(path, seconds, hz=880):
        frames = array.array('h', (int(12000 * math.sin(2 * math.pi * hz * n / 22050))
                                   for n in range(int(22050 * seconds))))
        with wave.open(path, 'wb') as w:
            w.setnchannels(1)
            w.setsampwidth(2)
            w.setframerate(22050)
            w.writeframes(frames.tobytes())
